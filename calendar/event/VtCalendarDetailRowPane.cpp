// A detail line: a grey caption, a black value, the colour swatch and the rule under the line.
#include "event/VtCalendarDetailRowPane.h"

#include <algorithm>

#include "APGetStr.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "VtTextFactory.h"
#include "VtTextLayout.h"
#include "VtTheme.h"

namespace {

constexpr int kCaptionLeft = 4;
constexpr int kCaptionWidth = 64;
constexpr int kValueLeft = 70;
constexpr int kSwatchSize = 14;
constexpr int kSwatchGap = 4;
constexpr int kPadding = 2;
constexpr int kStaticTextInset = 4;  // a wrapped label keeps two pixels free on each side
constexpr PLRGBColor kCaptionColour{110, 110, 110};
constexpr PLRGBColor kRuleColour{228, 228, 228};
constexpr PLRGBColor kSwatchFrame{90, 90, 90};
constexpr uint32_t kRowPaneOffset = 40;

int LineHeight() {
    return VtTheme::Current().TextFont()->GetLineHeight() + 2;
}

int ValueLeft(bool swatch) {
    return kValueLeft + (swatch ? kSwatchSize + kSwatchGap : 0);
}

}  // namespace

PLBasicString<char> VtCalendarDetailRowPane::ShownValue(const VtCalendarDetailRow& row, int width) {
    const std::string& text = row.value.str();
    const size_t join = text.find("  ");
    if (!row.dateAndTime || join == std::string::npos ||
        VtTheme::Current().TextFont()->MeasureText(text) <= width - kStaticTextInset) {
        return row.value;
    }
    return PLBasicString<char>(text.substr(0, join) + "\n" + text.substr(join + 2));
}

int VtCalendarDetailRowPane::ValueHeight(const PLBasicString<char>& value, bool multiLine,
                                         int width) {
    if (!multiLine) {
        return LineHeight();
    }
    const PLFont& font = *VtTheme::Current().TextFont();
    const size_t lines = VtTextLayout::Wrap(value.view(), width - kStaticTextInset, font).size();
    return int(std::max<size_t>(lines, 1)) * LineHeight() + 2;
}

VtCalendarDetailRowPane::VtCalendarDetailRowPane(const VtCalendarDetailRow& row, int top, int width)
    : PLView(row.paneID + kRowPaneOffset, PLPoint(top, 0), PLSize(0, width)),
      mSwatch(row.swatch),
      mColour(row.colour) {
    const int valueLeft = ValueLeft(row.swatch);
    const int valueWidth = std::max(width - valueLeft - kPadding, 1);
    const PLBasicString<char> shown = ShownValue(row, valueWidth);
    const int valueHeight = ValueHeight(shown, row.multiLine, valueWidth);
    const int height = std::max(valueHeight, LineHeight()) + 2 * kPadding + 1;
    SetSize(PLSize(height, width), false);

    VtStaticText* caption =
        MakeStaticText(row.paneID + kDetailCaptionOffset, PLPoint(kPadding, kCaptionLeft),
                       PLSize(LineHeight(), kCaptionWidth), APGetStr(row.captionTextID), -1, false,
                       0, kCaptionColour, nullptr);
    AddSubPane(caption, false);
    mValue =
        MakeStaticText(row.paneID, PLPoint(kPadding, valueLeft), PLSize(valueHeight, valueWidth),
                       shown, -1, row.multiLine, 0, PLRGBColor(-1, false), nullptr);
    AddSubPane(mValue, false);
}

void VtCalendarDetailRowPane::Draw(PLDrawContext& context) {
    const PLRect bounds = GetBounds();
    context.FillRect(bounds, VtTheme::Current().FieldColor());
    context.DrawLine(PLPoint(bounds.bottom - 1, 0), PLPoint(bounds.bottom - 1, bounds.right),
                     kRuleColour);
    if (mSwatch) {
        const int top = kPadding + (LineHeight() - kSwatchSize) / 2;
        const PLRect swatch(top, kValueLeft, top + kSwatchSize, kValueLeft + kSwatchSize);
        context.FillRect(swatch, mColour);
        context.FrameRect(swatch, kSwatchFrame);
    }
}
