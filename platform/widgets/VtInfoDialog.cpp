// Notices and questions: icon, wrapped title and message, fitted height.
#include "VtInfoDialog.h"

#include <algorithm>

#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "VtTextLayout.h"
#include "VtTheme.h"

namespace {
constexpr int kPadding = 10;
constexpr int kGap = 6;
}  // namespace

VtInfoDialog::VtInfoDialog(uint32_t id, PLSize extent, const PLBitmap* icon,
                           const PLBasicString<char>& title, const PLBasicString<char>& message)
    : VtBaseDialog(id, extent), mIcon(icon), mMessage(message), mRequestedHeight(extent.v) {
    // The title is the dialog's main text here (a question or a notice), so it is drawn in the
    // box rather than on a band.
    PLPane::SetString(title, false);
}

int VtInfoDialog::TextLeft(const PLRect& area) const {
    const int iconWidth = mIcon != nullptr ? std::min(mIcon->GetWidth(), area.Width() / 3) : 0;
    return area.left + kPadding + (iconWidth > 0 ? iconWidth + kPadding : 0);
}

void VtInfoDialog::FitHeight() {
    if (mRequestedHeight > 0) {
        return;
    }
    const VtTheme& theme = VtTheme::Current();
    const PLFont& font = *theme.TextFont();
    const PLRect area = ContentArea();
    const int width = area.right - kPadding - TextLeft(area);
    const int lineHeight = font.GetLineHeight() + 2;
    int text = int(VtTextLayout::Wrap(GetString().view(), width, font).size()) * lineHeight;
    if (!mMessage.IsEmpty()) {
        text += kGap + int(VtTextLayout::Wrap(mMessage.view(), width, font).size()) * lineHeight;
    }
    const int icon = mIcon != nullptr ? mIcon->GetHeight() : 0;
    const int buttons = GetButtons().empty() ? 0 : kButtonRowHeight;
    SetBoxSize(PLSize(4 + 2 * kPadding + std::max(text, icon) + buttons, GetBox().Width()));
}

void VtInfoDialog::DrawContent(PLDrawContext& context, const PLRect& area) {
    const VtTheme& theme = VtTheme::Current();
    PLFont* font = theme.TextFont();
    if (mIcon != nullptr) {
        context.DrawBitmap(*mIcon, PLPoint(area.top + kPadding, area.left + kPadding));
    }
    const int left = TextLeft(area);
    const int width = area.right - kPadding - left;
    const int lineHeight = font->GetLineHeight() + 2;
    int top = area.top + kPadding;
    const std::string_view title = GetString().view();
    for (const auto& line : VtTextLayout::Wrap(title, width, *font)) {
        theme.DrawText(context, title.substr(line.start, line.length),
                       {top, left, top + lineHeight, area.right - kPadding}, theme.TextColor(),
                       kPLJustifyLeft, font, 0);
        top += lineHeight;
    }
    if (mMessage.IsEmpty()) {
        return;
    }
    top += kGap;
    const std::string_view message = mMessage.view();
    for (const auto& line : VtTextLayout::Wrap(message, width, *font)) {
        theme.DrawText(context, message.substr(line.start, line.length),
                       {top, left, top + lineHeight, area.right - kPadding}, {80, 84, 92},
                       kPLJustifyLeft, font, 0);
        top += lineHeight;
    }
}
