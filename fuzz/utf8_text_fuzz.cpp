// Fuzz target: UTF-8 text of any quality through the font's measuring and fitting, string drawing
// into a small bitmap, and an edit field's text model with a byte limit. The first bytes of an
// input choose the limit, width, rectangle and edits; the rest is the text. Nothing may be cut
// inside a character, exceed a limit, or read or paint outside its buffer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLTypes.h"
#include "VtTextModel.h"

namespace {

constexpr size_t kControlBytes = 8;
constexpr int kBitmapWidth = 40;
constexpr int kBitmapHeight = 24;

struct Controls {
    uint8_t bytes[kControlBytes] = {};
    int Signed(int index, int scale) const { return (int(bytes[index]) - 128) * scale; }
};

// Whether `offset` is reached when walking `text` character by character from its start.
bool OnModelBoundary(std::string_view text, size_t offset) {
    size_t position = 0;
    while (position < offset) {
        position += VtTextModel::CharLength(text, position);
    }
    return position == offset;
}

bool OnFontBoundary(std::string_view text, size_t offset) {
    size_t position = 0;
    while (position < offset) {
        PLFont::DecodeUTF8(text, position);
    }
    return position == offset;
}

void CheckFont(const Controls& c, std::string_view text) {
    const PLFont* font = PLFont::GetFont(c.bytes[0] & 1 ? PLFourCC("UC24") : PLFourCC("UC16"));
    const int whole = font->MeasureText(text);
    FuzzCheck(whole >= 0, "a text has no negative width");
    const int width = c.Signed(1, 2);
    const size_t fit = font->FitText(text, width);
    FuzzCheck(fit <= text.size(), "a fit is part of the text");
    FuzzCheck(OnFontBoundary(text, fit), "a fit ends on a character boundary");
    FuzzCheck(font->MeasureText(text.substr(0, fit)) <= std::max(width, 0) || fit == 0,
              "a fitted prefix fits");
    FuzzCheck(fit < text.size() || whole <= width || text.empty(),
              "all of a text is fitted only when it fits");
}

void CheckDrawing(const Controls& c, std::string_view text) {
    PLBitmap bitmap(kBitmapWidth, kBitmapHeight);
    // A target pane partly off the bitmap, clipped to a part of it.
    PLDrawContext context(bitmap, PLPoint{c.Signed(2, 1) / 4, c.Signed(3, 1) / 4},
                          PLRect{2, 3, kBitmapHeight - 1, kBitmapWidth - 2});
    context.SetFont(PLFont::GetFont(c.bytes[0] & 1 ? PLFourCC("UC24") : PLFourCC("UC16")));
    context.SetTextColor(PLRGBColor{200, 10, 10});
    const PLRect rect{short(c.Signed(4, 1) / 2), short(c.Signed(5, 1) / 2), short(c.bytes[4] / 4),
                      short(c.bytes[5] / 2)};
    // Lengths past the end of the text must be held to it.
    const long length = long(c.bytes[6]) - 64;
    context.DrawString(text, rect, PLPoint{c.bytes[7] % 9 - 4, c.bytes[7] / 9 % 9 - 4}, length,
                       c.bytes[0] & 2, long(c.bytes[0] >> 2) % 4);
    // Through the other overload too, whose text is a copy with no room past its end.
    const PLBasicString<char> copy{std::string(text)};
    context.DrawString(copy, rect, PLPoint{0, 0}, length + 7, !(c.bytes[0] & 2), kPLJustifyRight);
    // The clip leaves the outer rows and columns of the bitmap untouched.
    for (int x = 0; x < kBitmapWidth; ++x) {
        FuzzCheck(bitmap.GetPixel(x, 0) == 0 && bitmap.GetPixel(x, kBitmapHeight - 1) == 0,
                  "drawing keeps to the clip's rows");
    }
    for (int y = 0; y < kBitmapHeight; ++y) {
        FuzzCheck(bitmap.GetPixel(0, y) == 0 && bitmap.GetPixel(kBitmapWidth - 1, y) == 0,
                  "drawing keeps to the clip's columns");
    }
}

void CheckModelInvariants(const VtTextModel& model) {
    const std::string& text = model.GetText();
    FuzzCheck(model.GetLimit() == 0 || text.size() <= model.GetLimit(), "a text keeps its limit");
    FuzzCheck(model.GetCaret() <= text.size(), "the caret stays in the text");
    FuzzCheck(OnModelBoundary(text, model.GetCaret()), "the caret sits on a boundary");
}

void CheckTextModel(const Controls& c, std::string_view text) {
    const bool valid = VtTextModel::IsValidUTF8(text);
    VtTextModel model(c.bytes[1] % 48);
    model.SetMultiLine(c.bytes[0] & 4);
    model.SetText(text);
    FuzzCheck(text.substr(0, model.GetText().size()) == model.GetText(), "SetText keeps a prefix");
    FuzzCheck(OnModelBoundary(text, model.GetText().size()), "SetText cuts on a boundary");
    FuzzCheck(!valid || VtTextModel::IsValidUTF8(model.GetText()), "valid text stays valid");
    CheckModelInvariants(model);

    model.SetCaret(c.bytes[2] % 64);
    CheckModelInvariants(model);
    model.Type(text);
    CheckModelInvariants(model);
    FuzzCheck(!valid || VtTextModel::IsValidUTF8(model.GetText()), "typing keeps valid text");
    model.MoveCaret(c.Signed(3, 1) / 8);
    model.EraseBack();
    CheckModelInvariants(model);
    if (c.bytes[5] & 1) {
        model.SetAcceptedChars("0123456789");
    }
    model.SetLimit(c.bytes[4] % 16);
    CheckModelInvariants(model);
    model.Insert(text);
    CheckModelInvariants(model);
    FuzzCheck(!valid || VtTextModel::IsValidUTF8(model.GetText()), "a cut keeps valid text");
    const size_t fit = VtTextModel::FitBytes(text, c.bytes[6] % 32);
    FuzzCheck(fit <= text.size() && OnModelBoundary(text, fit), "FitBytes cuts on a boundary");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Controls controls;
    const size_t taken = size < kControlBytes ? size : kControlBytes;
    for (size_t i = 0; i < taken; ++i) {
        controls.bytes[i] = data[i];
    }
    // The text is the input's own bytes: no NUL after it for a reader to rely on.
    const std::string_view text(reinterpret_cast<const char*>(data) + taken, size - taken);
    CheckFont(controls, text);
    CheckDrawing(controls, text);
    CheckTextModel(controls, text);
    return 0;
}
