// List containers: the list and its scroll bar side by side, kept in step.
#include "VtListViewContainer.h"

#include <algorithm>

#include "PLDrawContext.h"
#include "VtListRow.h"
#include "VtScrollBar.h"
#include "VtTheme.h"

VtListViewContainer::VtListViewContainer(uint32_t id, PLPoint location, PLSize size, long checkMode,
                                         bool showScrollBar, int scrollBarWidth, int rowHeight)
    : PLView(id, location, size),
      mList(new VtListView(id, PLPoint(0, 0), size, checkMode, rowHeight)),
      mBar(new VtScrollBar(0, PLPoint(0, 0), PLSize(size.v, std::max(0, scrollBarWidth)))),
      mShowBar(showScrollBar && scrollBarWidth > 0),
      mBarWidth(std::max(0, scrollBarWidth)) {
    // The list's notices go out through the container's broadcaster, under the container's id,
    // so that whoever listens to the container hears them.
    mList->SetBroadcaster(GetBroadcaster(), false);
    AddSubPane(mList, false);
    AddSubPane(mBar, false);
    mBar->SetStep(rowHeight, 1);
    mBar->SetOnScroll([this](long position) { mList->ScrollTo(position); });
    mList->SetOnScrolled([this] { SyncBar(); });
    Layout();
}

void VtListViewContainer::Layout() {
    const PLSize size = GetSize();
    if (size == mLaidOut) {
        return;
    }
    mLaidOut = size;
    const int barWidth = mShowBar ? std::min(mBarWidth, size.h) : 0;
    mList->SetSize(PLSize(size.v, size.h - barWidth), false);
    mBar->SetLocation(PLPoint(0, size.h - barWidth), false);
    mBar->SetSize(PLSize(size.v, barWidth), false);
    if (barWidth == 0) {
        mBar->Hide(false);
    } else {
        mBar->Show(false);
    }
    SyncBar();
}

void VtListViewContainer::SyncBar() {
    mBar->SetPage(GetSize().v);
    mBar->SetRange(mList->GetScrollRange());
    mBar->SetPosition(mList->GetScrollPosition());
}

void VtListViewContainer::AppendRow(VtListRow* row, bool redraw) {
    Layout();
    mList->AppendRow(row, redraw);
}

void VtListViewContainer::ClearAllRows(bool redraw) {
    mList->ClearAllRows(redraw);
}

VtListRow* VtListViewContainer::GetRowByIndex(size_t index) const {
    return mList->GetRowByIndex(index);
}

bool VtListViewContainer::CheckRowByIndex(size_t index, bool redraw) {
    return mList->CheckRowByIndex(index, redraw);
}

bool VtListViewContainer::UnCheckRowByIndex(size_t index, bool redraw) {
    return mList->UnCheckRowByIndex(index, redraw);
}

bool VtListViewContainer::IsRowIndexChecked(size_t index) const {
    return mList->IsRowIndexChecked(index);
}

size_t VtListViewContainer::GetCheckedRows(PLVector<long>& out) const {
    return mList->GetCheckedRows(out);
}

bool VtListViewContainer::FocusRowByIndex(size_t index, bool redraw) {
    Layout();
    return mList->FocusRowByIndex(index, redraw);
}

size_t VtListViewContainer::GetFocusedRowIndex() const {
    return mList->GetFocusedRowIndex();
}

size_t VtListViewContainer::GetRowCount() const {
    return mList->GetRowCount();
}

void VtListViewContainer::Draw(PLDrawContext& context) {
    Layout();
    context.FillRect(GetBounds(), VtTheme::Current().FieldColor());
}

bool VtListViewContainer::DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) {
    Layout();
    return mList->DoKeyCommand(key, repeat, modifiers);
}

std::string VtListViewContainer::DumpExtra() const {
    return mList->DumpExtra();
}
