#!/usr/bin/env python3
"""Writes the generated seed inputs of the fuzz corpora: a slice of the compiled calendar.rsc, event
records as the store keeps them, and UTF-8 samples. Files exported by calendar-ctl, settings files,
PNGs and scripts are copied in by hand (see README.md).

usage: make_seeds.py BUILD_DIR   (a build that has compiled share/calendar.rsc)
"""
import struct
import sys
import zlib
from pathlib import Path

CORPUS = Path(__file__).resolve().parent / "corpus"


def fourcc(code):
    return struct.unpack(">I", code.encode())[0]


def read_rsc(path):
    data = path.read_bytes()
    magic, version, count, _crc = struct.unpack_from("<4sIII", data, 0)
    assert magic == b"PLRS" and version == 1
    entries = []
    for i in range(count):
        kind, rid, selector, offset, length = struct.unpack_from("<5I", data, 16 + 20 * i)
        entries.append((kind, rid, selector, data[offset:offset + length]))
    return entries


def write_rsc(entries):
    header_size = 16 + 20 * len(entries)
    table = b""
    payload = b""
    for kind, rid, selector, body in entries:
        table += struct.pack("<5I", kind, rid, selector, header_size + len(payload), len(body))
        payload += body
    rest = table + payload
    return struct.pack("<4sIII", b"PLRS", 1, len(entries), zlib.crc32(rest)) + rest


def rsc_seeds(build):
    entries = read_rsc(Path(build) / "share" / "calendar.rsc")
    texts = [e for e in entries if e[0] == fourcc("text")]
    bitmaps = {e[1]: e for e in entries if e[0] == fourcc("bitm")}
    families = [e for e in entries if e[0] == fourcc("bitf")]
    # The smallest family whose bitmaps are all small, with those bitmaps.
    chosen = []
    for family in sorted(families, key=lambda f: sum(
            len(bitmaps[i][3]) for i in struct.unpack("<4I", f[3]) if i in bitmaps)):
        ids = [i for i in struct.unpack("<4I", family[3]) if i != 0]
        chosen = [bitmaps[i] for i in sorted(set(ids))] + [family]
        break
    wide = [t for t in texts if any(b >= 0x80 for b in t[3])][:3]
    slice_entries = texts[:6] + wide + chosen
    out = CORPUS / "resource_file"
    (out / "seed-calendar-slice.rsc").write_bytes(write_rsc(slice_entries))
    (out / "seed-texts-only.rsc").write_bytes(write_rsc(texts[:3]))
    (out / "seed-empty.rsc").write_bytes(write_rsc([]))


# Offsets of the event record's fields (2468 bytes).
RECORD_SIZE = 2468


def record(subject, start, end, last, kind=0, a=0, b=0, c=0, all_day=0, alarm=0,
           colour=11544, location="", notes=""):
    data = bytearray(RECORD_SIZE)
    struct.pack_into("<iiiiiiiiII", data, 20, start, end, 0, a, b, last, c, kind, colour, 11561)
    for offset, text in ((60, subject), (661, location), (1262, notes)):
        raw = text.encode()[:600]
        data[offset:offset + len(raw)] = raw
    data[2463] = all_day
    data[2464] = 1 if kind else 0
    data[2467] = alarm
    return bytes(data)


def store_seeds():
    out = CORPUS / "event_store"
    # Controls: zone, day offset from 1970-01-01 (2 bytes, little-endian), span.
    def controls(zone, day, span):
        return bytes([zone]) + struct.pack("<H", day) + bytes([span])
    day_2026_03_02 = 20514
    single = record("Team meeting", 1772443800, 1772448300, 1772448300, alarm=1,
                    location="Room 4", notes="Bring the plan")
    weekly = record("Gym", 1767722400, 1767726000, 1773597600, kind=2, a=1, b=5, c=20)
    monthly = record("Review", 1767866400, 1767870000, 1924991999, kind=4, a=2, b=517,
                     c=0xFFFFF)
    yearly = record("春节", 1771286400, 1771372799, 1924991999, kind=8, a=2, b=17, c=0xFFFFF,
                    all_day=1)
    daily = record("Stand-up", 1767603600, 1767604200, 1924991999, kind=1, a=1, b=1,
                   c=0xFFFFF)
    long_trip = record("Trip", 1785394800, 1785790800, 1785790800, colour=11549)
    full_text = record("x" * 600, 1772443800, 1772443800, 1772443800,
                       location="€" * 200, notes="汉" * 200)
    (out / "seed-single.bin").write_bytes(controls(0, day_2026_03_02, 30) + single)
    (out / "seed-repeating.bin").write_bytes(
        controls(2, day_2026_03_02, 41) + weekly + monthly + yearly + daily)
    (out / "seed-trip.bin").write_bytes(controls(4, 20664, 7) + long_trip)
    (out / "seed-full-text.bin").write_bytes(controls(5, day_2026_03_02, 1) + full_text)


def utf8_seeds():
    out = CORPUS / "utf8_text"
    samples = {
        "ascii": "Team meeting at 9",
        "chinese": "春节快乐，万事如意",
        "mixed": "Café 会议 👍 ok",
        "controls": "line one\nline two\ttab\b\bback",
    }
    raw = {
        "invalid": b"ok\xff\xfe\xc0\xaf\xe0\x80\xaf\xed\xa0\x80\xf4\x90\x80\x80end",
        "cut-sequence": "汉字".encode()[:-1],
        "lone-continuation": b"\x80\x80abc\xbf",
    }
    for name, text in samples.items():
        raw[name] = text.encode()
    for index, (name, text) in enumerate(sorted(raw.items())):
        # Eight control bytes: font and flags, width, origin, rectangle, length, offset.
        controls = bytes([index * 37 % 256, 60 + index * 11, 128, 128, 100, 120, 64, 40])
        (out / f"seed-{name}.bin").write_bytes(controls + text)


def png_chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(
        ">I", zlib.crc32(kind + body))


def png(width, height, depth, colour, rows, interlace=0, extra=b""):
    """A PNG of filter-0 rows (each row's bytes already packed for the depth and colour type)."""
    header = struct.pack(">IIBBBBB", width, height, depth, colour, 0, 0, interlace)
    raw = b"".join(b"\0" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header) + extra +
            png_chunk(b"IDAT", zlib.compress(raw)) + png_chunk(b"IEND", b""))


def png_seeds():
    """The colour types and depths the loader widens to 8-bit ARGB, which the project's own
    bitmaps (all 8-bit RGBA) do not show."""
    out = CORPUS / "png_load"
    grey = [bytes([x * 40 for x in range(6)]) for _ in range(4)]
    (out / "seed-grey8.png").write_bytes(png(6, 4, 8, 0, grey))
    grey_alpha = [bytes([v for x in range(3) for v in (x * 100, 255 - x * 80)]) for _ in range(3)]
    (out / "seed-grey-alpha.png").write_bytes(png(3, 3, 8, 4, grey_alpha))
    palette = png_chunk(b"PLTE", bytes([255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9]))
    transparency = png_chunk(b"tRNS", bytes([255, 128, 0]))
    indexed = [bytes([0b00011011]) for _ in range(2)]  # 2-bit indices 0,1,2,3
    (out / "seed-palette-2bit.png").write_bytes(
        png(4, 2, 2, 3, indexed, extra=palette + transparency))
    rgb16 = [b"".join(struct.pack(">HHH", x * 9000, 65535 - x * 9000, 300) for x in range(5))
             for _ in range(2)]
    (out / "seed-rgb16.png").write_bytes(png(5, 2, 16, 2, rgb16))
    # Interlaced: the raw data is the seven passes of an 8x8 grey image, one byte a pixel.
    passes = [(1, 1), (1, 1), (2, 1), (2, 2), (4, 2), (4, 4), (8, 4)]
    raw = b"".join(b"\0" + bytes(w) for w, h in passes for _ in range(h))
    header = struct.pack(">IIBBBBB", 8, 8, 8, 0, 0, 0, 1)
    (out / "seed-interlaced.png").write_bytes(
        b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header) +
        png_chunk(b"IDAT", zlib.compress(raw)) + png_chunk(b"IEND", b""))


ICS = """BEGIN:VCALENDAR\r
VERSION:2.0\r
PRODID:-//example//seed//EN\r
BEGIN:VEVENT\r
UID:seed-1@example\r
DTSTART;TZID=Asia/Shanghai:20260302T093000\r
DTEND;TZID=Asia/Shanghai:20260302T104500\r
SUMMARY:Planning\\, with a comma\r
LOCATION:Room 4\r
DESCRIPTION:Line one\\nline two\r
RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,WE;COUNT=10\r
BEGIN:VALARM\r
ACTION:DISPLAY\r
TRIGGER:-PT15M\r
DESCRIPTION:Reminder\r
END:VALARM\r
END:VEVENT\r
BEGIN:VEVENT\r
UID:seed-2@example\r
DTSTART;VALUE=DATE:20260217\r
DTEND;VALUE=DATE:20260218\r
SUMMARY:春节\r
RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=17;UNTIL=20301231\r
END:VEVENT\r
BEGIN:VEVENT\r
UID:seed-3@example\r
DTSTART:20260131T230000Z\r
DTEND:20260201T010000Z\r
SUMMARY:Month end\r
RRULE:FREQ=MONTHLY;BYDAY=-1FR\r
END:VEVENT\r
END:VCALENDAR\r
"""


def ics_seeds():
    (CORPUS / "vcalendar_import" / "seed-icalendar.ics").write_bytes(ICS.encode())


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    rsc_seeds(sys.argv[1])
    store_seeds()
    utf8_seeds()
    png_seeds()
    ics_seeds()
