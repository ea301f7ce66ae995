// The widget theme: palette, installation and the drawing helpers shared by every widget.
#include "VtTheme.h"

#include <algorithm>
#include <cstdlib>

#include "PLFont.h"
#include "PLPane.h"
#include "PLTypes.h"
#include "VtAppearance.h"
#include "VtPlatformText.h"

namespace {

uint8_t Mix(uint8_t a, uint8_t b, int num, int den) {
    if (den <= 0) {
        return a;
    }
    return static_cast<uint8_t>(a + (int(b) - int(a)) * num / den);
}

PLRGBColor Lerp(const PLRGBColor& a, const PLRGBColor& b, int num, int den) {
    return {Mix(a.red, b.red, num, den), Mix(a.green, b.green, num, den),
            Mix(a.blue, b.blue, num, den)};
}

bool IsBlack(const PLRGBColor& c) {
    return c.red == 0 && c.green == 0 && c.blue == 0;
}

}  // namespace

const VtTheme& VtTheme::Current() {
    if (const auto* theme = dynamic_cast<const VtTheme*>(PLThemeManager::GetCurrentTheme())) {
        return *theme;
    }
    // The palette without options, for panes drawn before any theme was installed.
    static const VtTheme fallback;
    return fallback;
}

PLRGBColor VtTheme::TextColor() const {
    return mOptions.highContrast ? kBlack : PLRGBColor{28, 28, 30};
}

PLRGBColor VtTheme::DisabledTextColor() const {
    return mOptions.highContrast ? PLRGBColor{96, 96, 96} : PLRGBColor{150, 152, 156};
}

PLRGBColor VtTheme::BarTop() const {
    return {82, 88, 100};
}
PLRGBColor VtTheme::BarBottom() const {
    return {42, 46, 54};
}
PLRGBColor VtTheme::BandTop() const {
    return {38, 132, 255};
}
PLRGBColor VtTheme::BandBottom() const {
    return {0, 88, 222};
}

PLRGBColor VtTheme::BorderColor() const {
    return mOptions.highContrast ? kBlack : PLRGBColor{158, 163, 172};
}

PLRGBColor VtTheme::FieldColor() const {
    return kWhite;
}
PLRGBColor VtTheme::HighlightColor() const {
    return {222, 234, 255};
}

void VtTheme::DrawBmpBackground(PLDrawContext& context, const PLPane&) const {
    if (!mOptions.bmpBackgrounds) {
        return;
    }
    // The background is a gradient over the whole application area in screen coordinates, so
    // that a label or a check box asking for it matches its parent seamlessly.
    PLRGBColor top{247, 248, 250};
    PLRGBColor bottom{224, 228, 234};
    if (!IsBlack(mOptions.tint)) {
        top = Lerp(top, mOptions.tint, 1, 8);
        bottom = Lerp(bottom, mOptions.tint, 1, 8);
    }
    const PLRect clip = context.GetClipRect();
    const int originV = context.GetOrigin().v;
    const int span = kPLScreenHeight - kPLStatusHeight;
    for (int y = clip.top; y < clip.bottom; ++y) {
        const int screenY = std::clamp(originV + y - kPLStatusHeight, 0, span);
        const PLRGBColor c = mOptions.gradients ? Lerp(top, bottom, screenY, span) : top;
        context.FillRect({y, clip.left, y + 1, clip.right}, c);
    }
}

void VtTheme::DrawViewBackground(PLDrawContext& context, const PLPane& pane) const {
    context.FillRect(pane.GetBounds(), GetBackgroundColor());
}

PLFont* VtTheme::TextFont() const {
    return PLFont::GetFont(mOptions.fontScale >= 1 ? PLFourCC("UC24") : PLFourCC("UC16"));
}

PLFont* VtTheme::LargeFont() const {
    return PLFont::GetFont(PLFourCC("UC24"));
}

PLFont* VtTheme::FontFor(const VtAppearance* appearance) const {
    if (appearance != nullptr && appearance->font != nullptr) {
        return appearance->font;
    }
    return TextFont();
}

PLRGBColor VtTheme::Resolve(const PLRGBColor& color, const PLRGBColor& fallback) {
    return color.isDefault ? fallback : color;
}

void VtTheme::FillGradient(PLDrawContext& context, const PLRect& rect, PLRGBColor top,
                           PLRGBColor bottom) const {
    if (rect.IsEmpty()) {
        return;
    }
    if (!mOptions.gradients) {
        context.FillRect(rect, Lerp(top, bottom, 1, 2));
        return;
    }
    const int span = std::max(1, rect.Height() - 1);
    for (int y = rect.top; y < rect.bottom; ++y) {
        context.FillRect({y, rect.left, y + 1, rect.right}, Lerp(top, bottom, y - rect.top, span));
    }
}

void VtTheme::DrawFace(PLDrawContext& context, const PLRect& rect, PLRGBColor top,
                       PLRGBColor bottom, PLRGBColor border) const {
    if (rect.Width() < 3 || rect.Height() < 3) {
        context.FillRect(rect, border);
        return;
    }
    FillGradient(context, rect.Insetted(1, 1), top, bottom);
    if (!mOptions.roundedCorners) {
        context.FrameRect(rect, border);
        return;
    }
    const int r = rect.right - 1;
    const int b = rect.bottom - 1;
    context.DrawLine({rect.top, rect.left + 1}, {rect.top, r - 1}, border);
    context.DrawLine({b, rect.left + 1}, {b, r - 1}, border);
    context.DrawLine({rect.top + 1, rect.left}, {b - 1, rect.left}, border);
    context.DrawLine({rect.top + 1, r}, {b - 1, r}, border);
}

void VtTheme::DrawBarButton(PLDrawContext& context, const PLRect& rect, VtFaceState state) const {
    switch (state) {
        case VtFaceState::Pressed:
        case VtFaceState::On:
            DrawFace(context, rect, {255, 184, 72}, {240, 130, 0}, {150, 80, 0});
            break;
        case VtFaceState::Disabled:
            DrawFace(context, rect, {104, 108, 118}, {78, 82, 90}, {40, 42, 48});
            break;
        case VtFaceState::Normal:
            DrawFace(context, rect, BarTop(), BarBottom(), {24, 26, 30});
            if (rect.Height() > 4 && rect.Width() > 4) {
                // A faint top light so that adjacent bar buttons read as separate keys.
                context.DrawLine({rect.top + 1, rect.left + 2}, {rect.top + 1, rect.right - 3},
                                 {112, 118, 130});
            }
            break;
    }
}

void VtTheme::DrawLightButton(PLDrawContext& context, const PLRect& rect, VtFaceState state) const {
    switch (state) {
        case VtFaceState::Pressed:
            DrawFace(context, rect, {255, 200, 110}, {255, 153, 0}, {196, 110, 0});
            break;
        case VtFaceState::On:
            DrawFace(context, rect, {214, 228, 255}, {170, 199, 255}, kBlue);
            break;
        case VtFaceState::Disabled:
            DrawFace(context, rect, {240, 241, 243}, {232, 233, 236}, {200, 202, 206});
            break;
        case VtFaceState::Normal:
            DrawFace(context, rect, {253, 253, 254}, {224, 227, 232}, BorderColor());
            break;
    }
}

void VtTheme::DrawBand(PLDrawContext& context, const PLRect& rect) const {
    FillGradient(context, rect, BandTop(), BandBottom());
    if (rect.Height() > 1) {
        context.DrawLine({rect.bottom - 1, rect.left}, {rect.bottom - 1, rect.right - 1},
                         {0, 66, 170});
    }
}

void VtTheme::DrawFieldBox(PLDrawContext& context, const PLRect& rect, bool focused, bool enabled,
                           long border) const {
    context.FillRect(rect, enabled ? FieldColor() : PLRGBColor{238, 239, 241});
    if (border == 0) {
        return;
    }
    const int width = border < 0 ? 1 : static_cast<int>(std::min<long>(border, 3));
    PLRGBColor color = enabled ? BorderColor() : PLRGBColor{200, 202, 206};
    PLRect frame = rect;
    for (int i = 0; i < width; ++i) {
        context.FrameRect(frame, color);
        frame.Inset(1, 1);
    }
    if (focused) {
        context.FrameRect(rect, kBlue);
        context.FrameRect(rect.Insetted(1, 1), kBlue);
    }
}

void VtTheme::DrawCheckBox(PLDrawContext& context, const PLRect& box, bool checked, bool pressed,
                           bool enabled) const {
    const PLRGBColor border =
        pressed ? kOrange : (enabled ? BorderColor() : PLRGBColor{200, 202, 206});
    if (checked) {
        const PLRGBColor fill = enabled ? kBlue : PLRGBColor{170, 178, 196};
        DrawFace(context, box, fill, fill, pressed ? kOrange : fill);
        // The tick: two strokes two pixels thick.
        const int l = box.left + box.Width() / 5;
        const int m = box.left + box.Width() * 2 / 5;
        const int r = box.right - box.Width() / 5;
        const int mid = box.top + box.Height() / 2;
        const int low = box.bottom - box.Height() / 4;
        const int high = box.top + box.Height() / 4;
        for (int d = 0; d < 2; ++d) {
            context.DrawLine({mid + d, l}, {low + d, m}, kWhite);
            context.DrawLine({low + d, m}, {high + d, r}, kWhite);
        }
        return;
    }
    DrawFace(context, box, enabled ? kWhite : PLRGBColor{238, 239, 241},
             enabled ? PLRGBColor{236, 238, 242} : PLRGBColor{238, 239, 241}, border);
}

void VtTheme::DrawRadio(PLDrawContext& context, const PLRect& box, bool on, bool pressed,
                        bool enabled) const {
    const int size = std::min(box.Width(), box.Height());
    if (size < 4) {
        return;
    }
    // Integer circle in doubled coordinates so that even sizes centre between pixels.
    const int cv = box.top * 2 + size - 1;
    const int ch = box.left * 2 + size - 1;
    const int outer = size * size;
    const int inner = (size - 3) * (size - 3);
    const int dot = (size / 2 - 1) * (size / 2 - 1);
    const PLRGBColor ring =
        pressed ? kOrange : (enabled ? BorderColor() : PLRGBColor{200, 202, 206});
    const PLRGBColor fill = enabled ? kWhite : PLRGBColor{238, 239, 241};
    const PLRGBColor mark = enabled ? kBlue : PLRGBColor{170, 178, 196};
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const int dv = (box.top + y) * 2 - cv;
            const int dh = (box.left + x) * 2 - ch;
            const int d = dv * dv + dh * dh;
            if (d > outer) {
                continue;
            }
            PLRGBColor c = d > inner ? ring : fill;
            if (on && d <= dot) {
                c = mark;
            }
            context.SetPixel({box.top + y, box.left + x}, c);
        }
    }
}

void VtTheme::DrawArrow(PLDrawContext& context, const PLRect& rect, VtArrow direction,
                        PLRGBColor color) const {
    const int half = std::max(2, std::min(rect.Width(), rect.Height()) / 3);
    const int cv = rect.top + rect.Height() / 2;
    const int ch = rect.left + rect.Width() / 2;
    for (int k = 0; k <= half; ++k) {
        switch (direction) {
            case VtArrow::Left:
                context.DrawLine({cv - k, ch - half / 2 + k}, {cv + k, ch - half / 2 + k}, color);
                break;
            case VtArrow::Right:
                context.DrawLine({cv - k, ch + half / 2 - k}, {cv + k, ch + half / 2 - k}, color);
                break;
            case VtArrow::Up:
                context.DrawLine({cv - half / 2 + k, ch - k}, {cv - half / 2 + k, ch + k}, color);
                break;
            case VtArrow::Down:
                context.DrawLine({cv + half / 2 - k, ch - k}, {cv + half / 2 - k, ch + k}, color);
                break;
        }
    }
}

void VtTheme::DrawFocusFrame(PLDrawContext& context, const PLRect& rect) const {
    context.FrameRect(rect, kOrange);
    context.FrameRect(rect.Insetted(1, 1), kOrange);
}

void VtTheme::DrawText(PLDrawContext& context, std::string_view text, const PLRect& rect,
                       PLRGBColor color, long justification, PLFont* font, int inset) const {
    if (text.empty() || rect.IsEmpty()) {
        return;
    }
    context.SetTextColor(color);
    context.SetFont(font != nullptr ? font : TextFont());
    context.DrawString(text, rect, PLPoint(0, inset), 0, true, justification);
}

void InitVantorTheme(const PLRGBColor& tint, long fontScale, bool bmpBackgrounds, bool gradients,
                     bool roundedCorners, bool highContrast) {
    VtTheme::Options options;
    options.tint = tint;
    options.fontScale = fontScale;
    options.bmpBackgrounds = bmpBackgrounds;
    options.gradients = gradients;
    options.roundedCorners = roundedCorners;
    options.highContrast = highContrast;
    PLThemeManager::SetCurrentTheme(new VtTheme(options));
    // The widgets' own texts (month names, key labels); without the file they keep their
    // fallbacks, so a failure here is reported but does not stop the application.
    VtPlatformText::Install();
}
