#!/usr/bin/env python3
"""Draws the calendar's bitmaps into bitmaps/ID.png (pure Python: zlib writes the PNGs).

One palette for everything: the grid grey 228, selection orange 255,153,0, today blue 0,102,255,
weekend red 204,0,0, white, and a charcoal for the header bands on which white names are drawn.
Shapes are sampled 4x4 per pixel so that edges are smooth without any image library.
The output is deterministic: running the script again rewrites identical files.

Usage: make-bitmaps.py [OUTPUT_DIR]   (default: the bitmaps/ folder beside this script)
"""

import math
import os
import struct
import sys
import zlib

WHITE = (255, 255, 255)
GRID = (228, 228, 228)
LINE = (187, 187, 187)
ORANGE = (255, 153, 0)
BLUE = (0, 102, 255)
RED = (204, 0, 0)
INK = (64, 64, 64)

SAMPLES = 4  # per axis


# ---- PNG ----

def png_bytes(width, height, pixels):
    """pixels: rows of (r, g, b, a) tuples."""
    raw = bytearray()
    for row in pixels:
        raw.append(0)  # filter: none
        for r, g, b, a in row:
            raw += bytes((r, g, b, a))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)  # 8-bit RGBA
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


# ---- canvas ----

class Canvas:
    def __init__(self, width, height, fill=(0, 0, 0, 0)):
        self.width = width
        self.height = height
        self.px = [[fill for _ in range(width)] for _ in range(height)]

    def blend(self, x, y, colour, coverage):
        if coverage <= 0:
            return
        r, g, b = colour[:3]
        a = (colour[3] / 255.0 if len(colour) > 3 else 1.0) * min(coverage, 1.0)
        dr, dg, db, da = self.px[y][x]
        da /= 255.0
        out_a = a + da * (1 - a)
        if out_a <= 0:
            return

        def mix(src, dst):
            return int(round((src * a + dst * da * (1 - a)) / out_a))

        self.px[y][x] = (mix(r, dr), mix(g, dg), mix(b, db), int(round(out_a * 255)))

    def shape(self, inside, colour):
        """Paints where inside(x, y) is true, x and y in pixel units (pixel centres at +0.5).
        `colour` is a tuple or a function of the pixel's (x, y)."""
        step = 1.0 / SAMPLES
        for y in range(self.height):
            for x in range(self.width):
                hits = 0
                for sy in range(SAMPLES):
                    for sx in range(SAMPLES):
                        if inside(x + (sx + 0.5) * step, y + (sy + 0.5) * step):
                            hits += 1
                if hits:
                    c = colour(x, y) if callable(colour) else colour
                    self.blend(x, y, c, hits / float(SAMPLES * SAMPLES))

    def fill_rows(self, colour_of_row):
        for y in range(self.height):
            c = colour_of_row(y)
            for x in range(self.width):
                self.px[y][x] = (c[0], c[1], c[2], 255)

    def save(self, path):
        with open(path, "wb") as out:
            out.write(png_bytes(self.width, self.height, self.px))


def lerp(a, b, t):
    return tuple(int(round(a[i] + (b[i] - a[i]) * t)) for i in range(3))


def gradient(top, bottom, height):
    return lambda y: lerp(top, bottom, y / max(height - 1, 1))


# ---- shape predicates ----

def rounded_rect(left, top, right, bottom, radius):
    def inside(x, y):
        if x < left or x > right or y < top or y > bottom:
            return False
        cx = min(max(x, left + radius), right - radius)
        cy = min(max(y, top + radius), bottom - radius)
        return (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius
    return inside


def circle(cx, cy, radius):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius


def segment(x1, y1, x2, y2, width):
    """A stroke with round ends."""
    half = width / 2.0

    def inside(x, y):
        dx, dy = x2 - x1, y2 - y1
        length2 = dx * dx + dy * dy
        t = 0.0 if length2 == 0 else max(0.0, min(1.0, ((x - x1) * dx + (y - y1) * dy) / length2))
        px, py = x1 + t * dx, y1 + t * dy
        return (x - px) ** 2 + (y - py) ** 2 <= half * half
    return inside


def arc(cx, cy, radius, width, start_deg, end_deg):
    """A ring stroke from start to end angle, degrees counter-clockwise from 3 o'clock (y up)."""
    half = width / 2.0

    def inside(x, y):
        d = math.hypot(x - cx, y - cy)
        if abs(d - radius) > half:
            return False
        angle = math.degrees(math.atan2(cy - y, x - cx)) % 360
        lo, hi = start_deg % 360, end_deg % 360
        return lo <= angle <= hi if lo <= hi else angle >= lo or angle <= hi
    return inside


def polygon(points):
    def inside(x, y):
        result = False
        j = len(points) - 1
        for i in range(len(points)):
            xi, yi = points[i]
            xj, yj = points[j]
            if (yi > y) != (yj > y) and x < (xj - xi) * (y - yi) / (yj - yi) + xi:
                result = not result
            j = i
        return result
    return inside


def union(*shapes):
    return lambda x, y: any(s(x, y) for s in shapes)


def minus(shape, hole):
    return lambda x, y: shape(x, y) and not hole(x, y)


# ---- header strips (one pixel wide, stretched or tiled by the views) ----

BAND_TOP = (78, 78, 78)
BAND_BOTTOM = (52, 52, 52)
BAND_PRESSED_TOP = (36, 36, 36)
BAND_PRESSED_BOTTOM = (22, 22, 22)
# The day numbers are white, today's blue and the weekend's red: on a band this close to black the
# blue reads at a contrast of about 4.2:1 and the red at 3.4:1 (on the names' charcoal, 3.2:1 and
# 2.6:1). The pressed strip is lighter, so that a press shows.
NUMBERS_TOP = (14, 14, 14)
NUMBERS_BOTTOM = (0, 0, 0)
NUMBERS_PRESSED_TOP = (52, 52, 52)
NUMBERS_PRESSED_BOTTOM = (36, 36, 36)


def band(height, top, bottom, highlight=True):
    c = Canvas(1, height)
    c.fill_rows(gradient(top, bottom, height))
    if highlight:
        c.px[0][0] = tuple(min(v + 40, 255) for v in top) + (255,)
    c.px[height - 1][0] = (20, 20, 20, 255)
    return c


def lunar_strip():
    c = Canvas(1, 30)
    c.fill_rows(gradient((255, 246, 232), (255, 233, 204), 30))
    c.px[29][0] = GRID + (255,)
    return c


# ---- buttons ----

def button(width, height, state, popup=False):
    c = Canvas(width, height)
    if state == "pressed":
        top, bottom, border = (255, 178, 64), (240, 138, 0), (204, 112, 0)
    elif state == "disabled":
        top, bottom, border = (240, 240, 240), (232, 232, 232), (214, 214, 214)
    else:
        top, bottom, border = (250, 250, 250), (214, 214, 214), LINE
    c.shape(rounded_rect(0, 0, width, height, 4), border)
    c.shape(rounded_rect(1, 1, width - 1, height - 1, 3),
            lambda x, y: lerp(top, bottom, y / float(height - 1)))
    if state == "normal":
        c.shape(lambda x, y: 2 <= y < 3 and 4 <= x <= width - 4, (255, 255, 255, 160))
    if popup:
        mark = INK if state != "disabled" else LINE
        cx, cy = width - 12, height / 2.0
        c.shape(polygon([(cx - 4, cy + 2), (cx + 4, cy + 2), (cx, cy - 3)]), mark)
    return c



def picker_button(glyph, state):
    """The form's date and time picker buttons: a small light button with a calendar page or a
    clock face, 26 by 24."""
    c = button(26, 24, state)
    ink = LINE if state == "disabled" else (WHITE if state == "pressed" else INK)
    if glyph == "clock":
        c.shape(minus(circle(13, 12, 7.5), circle(13, 12, 6)), ink)
        c.shape(union(segment(13, 12, 13, 7.5, 1.5), segment(13, 12, 16.5, 12, 1.5)), ink)
    else:
        c.shape(minus(rounded_rect(6, 5, 20, 19, 1.5), rounded_rect(7.5, 9.5, 18.5, 17.5, 0.5)),
                ink)
        for row in (11.5, 14.5):
            for col in (9.5, 13, 16.5):
                c.shape(circle(col, row, 1.0), ink)
    return c

def day_button(pressed):
    c = Canvas(26, 26)
    border = BLUE if pressed else LINE
    fill = (214, 230, 255) if pressed else WHITE
    c.shape(rounded_rect(0, 0, 26, 26, 4), border)
    c.shape(rounded_rect(1, 1, 25, 25, 3), fill)
    return c


def row_label(pressed):
    c = Canvas(42, 24)
    if pressed:
        c.shape(rounded_rect(0, 0, 42, 24, 4), ORANGE)
    else:
        c.shape(rounded_rect(0, 0, 42, 24, 4), (214, 214, 214))
        c.shape(rounded_rect(1, 1, 41, 23, 3), (238, 238, 238))
    return c


# ---- icons ----

def alarm_bell():
    c = Canvas(24, 24)
    dome = union(circle(12, 10, 7), polygon([(5, 10), (19, 10), (21, 17), (3, 17)]))
    c.shape(union(dome, rounded_rect(2, 16, 22, 19, 1.5)), ORANGE)
    c.shape(circle(12, 20.5, 2.5), ORANGE)
    c.shape(circle(12, 3, 1.8), ORANGE)
    c.shape(segment(8.5, 8, 10, 6, 1.4), (255, 220, 160))  # a highlight on the dome
    return c


def repeat_arrows():
    c = Canvas(24, 24)
    c.shape(arc(12, 12, 8, 3, 25, 165), BLUE)
    c.shape(arc(12, 12, 8, 3, 205, 345), BLUE)
    # Arrow heads at the anticlockwise ends of both arcs: the two arrows chase each other.
    c.shape(polygon([(0, 9), (8, 9), (4, 15)]), BLUE)
    c.shape(polygon([(16, 15), (24, 15), (20, 9)]), BLUE)
    return c


def info_icon():
    c = Canvas(32, 32)
    c.shape(circle(16, 16, 15), BLUE)
    c.shape(circle(16, 9, 2.4), WHITE)
    c.shape(rounded_rect(13.8, 13, 18.2, 25, 1.2), WHITE)
    return c


def question_icon():
    c = Canvas(32, 32)
    c.shape(circle(16, 16, 15), ORANGE)
    c.shape(arc(16, 11.5, 5, 3.4, -90, 180), WHITE)
    c.shape(segment(16, 16.5, 16, 19.5, 3.4), WHITE)
    c.shape(circle(16, 24.5, 2.2), WHITE)
    return c


def warning_icon():
    c = Canvas(32, 32)
    outline = polygon([(16, 1.5), (31, 29.5), (1, 29.5)])
    c.shape(outline, RED)
    c.shape(segment(16, 11, 16, 20, 3.4), WHITE)
    c.shape(circle(16, 25, 2.1), WHITE)
    return c


def error_icon():
    c = Canvas(32, 32)
    c.shape(circle(16, 16, 15), RED)
    c.shape(segment(16, 8, 16, 18, 3.6), WHITE)
    c.shape(circle(16, 23.5, 2.3), WHITE)
    return c


# ---- the set ----

def bitmaps():
    return {
        # Month view weekday band (stretched across the view, white names on it).
        10280: band(29, BAND_TOP, BAND_BOTTOM),
        # Week view header: weekday-name buttons (24 high) and day-number buttons (21 high);
        # the first of each pair is the pressed look and also fills the header's side margins.
        10290: band(24, BAND_PRESSED_TOP, BAND_PRESSED_BOTTOM, highlight=False),
        10300: band(24, BAND_TOP, BAND_BOTTOM),
        10310: band(21, NUMBERS_PRESSED_TOP, NUMBERS_PRESSED_BOTTOM, highlight=False),
        10320: band(21, NUMBERS_TOP, NUMBERS_BOTTOM),
        # Day view: lunar date row, row icons, hour-label background.
        10340: lunar_strip(),
        10130: alarm_bell(),
        10240: repeat_arrows(),
        10092: row_label(False),
        10093: row_label(True),
        # Weekly repeat editor day buttons.
        10370: day_button(True),
        10380: day_button(False),
        # Event form: time and date picker buttons (normal, pressed, disabled).
        10410: picker_button("clock", "normal"),
        10411: picker_button("clock", "pressed"),
        10412: picker_button("clock", "disabled"),
        10420: picker_button("calendar", "normal"),
        10421: picker_button("calendar", "pressed"),
        10422: picker_button("calendar", "disabled"),
        # Dialog icons.
        32050: error_icon(),
        32060: info_icon(),
        32130: question_icon(),
        32180: warning_icon(),
        # Bottom-bar buttons: centre bar button, centre popup button, side buttons.
        30375: button(154, 36, "normal"),
        30376: button(154, 36, "pressed"),
        30377: button(154, 36, "disabled"),
        30395: button(154, 36, "normal", popup=True),
        30396: button(154, 36, "pressed", popup=True),
        30397: button(154, 36, "disabled", popup=True),
        30405: button(43, 36, "normal"),
        30406: button(43, 36, "pressed"),
        30407: button(43, 36, "disabled"),
    }


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "bitmaps")
    os.makedirs(out_dir, exist_ok=True)
    for bitmap_id, canvas in sorted(bitmaps().items()):
        canvas.save(os.path.join(out_dir, "%d.png" % bitmap_id))
    return 0


if __name__ == "__main__":
    sys.exit(main())
