// Factories of lists and list rows.
#include "VtListFactory.h"

#include "PLDrawContext.h"

namespace {

VtListRow* MakeRow(VtListRow::Kind kind, PLBitmap* icon, const PLBasicString<char>& text,
                   const PLBasicString<char>& secondText, PLBitmap* secondIcon,
                   const PLVector<PLBasicString<char>>* extraTexts, uint32_t id, long textColor,
                   long justification, bool highlightChecked, bool disabled) {
    auto* row = new VtListRow(kind, id, icon, text, secondText, secondIcon);
    row->SetExtraTexts(extraTexts);
    if (textColor >= 0) {
        row->SetTextColor(PLRGBColor(textColor, false), false);
    }
    row->SetJustification(justification < 0 || justification > 2 ? kPLJustifyLeft : justification);
    row->SetHighlightChecked(highlightChecked);
    if (disabled) {
        row->SetEnabled(false, false);
    }
    return row;
}

}  // namespace

VtListViewContainer* MakeVtListViewContainer(PLPoint location, PLSize size, long checkMode,
                                             bool showScrollBar, bool wrapFocus,
                                             short scrollBarWidth, unsigned short rowHeight,
                                             uint32_t id, VtListDataProvider* provider,
                                             bool tapChecks, bool sendNotices) {
    auto* container = new VtListViewContainer(id, location, size, checkMode, showScrollBar,
                                              scrollBarWidth, rowHeight == 0 ? 30 : rowHeight);
    VtListView* list = container->GetListView();
    list->SetWrapFocus(wrapFocus);
    list->SetTapChecks(tapChecks);
    list->SetSendNotices(sendNotices);
    list->SetDataProvider(provider);
    list->Reload();
    return container;
}

VtListRow* MakeCheckBoxListRow(PLBitmap* icon, const PLBasicString<char>& text,
                               const PLBasicString<char>& secondText, PLBitmap* secondIcon,
                               const PLVector<PLBasicString<char>>* extraTexts, uint32_t id,
                               long textColor, long justification, bool highlightChecked,
                               bool disabled) {
    return MakeRow(VtListRow::Kind::CheckBox, icon, text, secondText, secondIcon, extraTexts, id,
                   textColor, justification, highlightChecked, disabled);
}

VtListRow* MakeRadioButtonListRow(PLBitmap* icon, const PLBasicString<char>& text,
                                  const PLBasicString<char>& secondText, PLBitmap* secondIcon,
                                  const PLVector<PLBasicString<char>>* extraTexts, uint32_t id,
                                  long textColor, long justification, bool highlightChecked,
                                  bool disabled) {
    return MakeRow(VtListRow::Kind::Radio, icon, text, secondText, secondIcon, extraTexts, id,
                   textColor, justification, highlightChecked, disabled);
}
