// Lists: rows stacked and scrolled, checking by mode, focus, taps, keys and notices.
#include "VtListView.h"

#include <algorithm>
#include <string>

#include "PLDrawContext.h"
#include "PLMessage.h"
#include "VtKeyStep.h"
#include "VtListDataProvider.h"
#include "VtListRow.h"
#include "VtTheme.h"

namespace {
constexpr int kDragThreshold = 6;
}

VtListView::VtListView(uint32_t id, PLPoint location, PLSize size, long checkMode, int rowHeight)
    : PLView(id, location, size), mModel(checkMode), mRowHeight(std::max(1, rowHeight)) {}

VtListView::~VtListView() = default;

void VtListView::AppendRow(VtListRow* row, bool redraw) {
    if (row == nullptr) {
        return;
    }
    const int top = int(mRows.size()) * mRowHeight;
    row->SetLocation(PLPoint(top, 0), false);
    row->SetSize(PLSize(mRowHeight, GetSize().h), false);
    row->SetChecked(false, false);
    row->SetFocused(false, false);
    AddSubPane(row, redraw);
    mRows.push_back(row);
    mModel.Append();
    if (mOnScrolled) {
        mOnScrolled();
    }
}

void VtListView::ClearAllRows(bool redraw) {
    for (VtListRow* row : mRows) {
        RemoveSubPane(row);
        delete row;
    }
    mRows.clear();
    mModel.Clear();
    ScrollTo(0, false);
    if (redraw) {
        Redraw();
    }
}

void VtListView::Reload() {
    if (mProvider == nullptr) {
        return;
    }
    ClearAllRows(false);
    const size_t count = mProvider->GetRowCount();
    for (size_t i = 1; i <= count; ++i) {
        AppendRow(mProvider->MakeRow(i), false);
    }
    Redraw();
}

VtListRow* VtListView::GetRowByIndex(size_t index) const {
    return mModel.IsValid(index) ? mRows[index - 1] : nullptr;
}

void VtListView::SyncRow(size_t index, bool redraw) {
    if (VtListRow* row = GetRowByIndex(index)) {
        row->SetChecked(mModel.IsChecked(index), redraw);
        row->SetFocused(mModel.GetFocus() == index, redraw);
    }
}

bool VtListView::CheckRowByIndex(size_t index, bool redraw) {
    if (!mModel.IsValid(index)) {
        return false;
    }
    if (mModel.Check(index)) {
        for (size_t i = 1; i <= mRows.size(); ++i) {
            SyncRow(i, redraw);
        }
    }
    return mModel.IsChecked(index);
}

bool VtListView::UnCheckRowByIndex(size_t index, bool redraw) {
    if (!mModel.IsValid(index)) {
        return false;
    }
    mModel.UnCheck(index);
    SyncRow(index, redraw);
    return true;
}

bool VtListView::IsRowIndexChecked(size_t index) const {
    return mModel.IsChecked(index);
}

size_t VtListView::GetCheckedRows(PLVector<long>& out) const {
    const std::vector<size_t> checked = mModel.GetChecked();
    for (size_t index : checked) {
        out.Append(static_cast<long>(index));
    }
    return checked.size();
}

size_t VtListView::GetCheckedCount() const {
    return mModel.GetChecked().size();
}

bool VtListView::FocusRowByIndex(size_t index, bool redraw) {
    if (!mModel.IsValid(index)) {
        return false;
    }
    const size_t before = mModel.GetFocus();
    mModel.SetFocus(index);
    SyncRow(before, redraw);
    SyncRow(index, redraw);
    KeepInView(index);
    return true;
}

long VtListView::GetScrollRange() const {
    return std::max(0L, long(mRows.size()) * mRowHeight - GetSize().v);
}

void VtListView::ScrollTo(long offset, bool redraw) {
    const long clamped = std::clamp(offset, 0L, GetScrollRange());
    if (clamped != GetScrollOffset().v) {
        SetScrollOffset(PLPoint(int(clamped), 0), redraw);
    }
    if (mOnScrolled) {
        mOnScrolled();
    }
}

void VtListView::KeepInView(size_t index) {
    const long top = long(index - 1) * mRowHeight;
    const long offset = GetScrollOffset().v;
    if (top < offset) {
        ScrollTo(top);
    } else if (top + mRowHeight > offset + GetSize().v) {
        ScrollTo(top + mRowHeight - GetSize().v);
    }
}

void VtListView::Notify(uint32_t notice, size_t index) {
    if (!mSendNotices) {
        return;
    }
    PLMessage message(notice, GetID(), static_cast<uint32_t>(index), kEmptyString, kEmptyString);
    BroadcastMessage(&message);
}

void VtListView::UserFocus(size_t index) {
    const size_t before = mModel.GetFocus();
    if (!mModel.SetFocus(index)) {
        return;
    }
    SyncRow(before, true);
    SyncRow(index, true);
    KeepInView(index);
    Notify(kVtListFocusNotice, index);
}

void VtListView::UserChoose(size_t index) {
    VtListRow* row = GetRowByIndex(index);
    if (row == nullptr || !row->IsEnabled()) {
        return;
    }
    UserFocus(index);
    if (mModel.Choose(index)) {
        for (size_t i = 1; i <= mRows.size(); ++i) {
            SyncRow(i, true);
        }
        Notify(kVtListCheckNotice, index);
    }
}

size_t VtListView::RowAt(PLPoint local) const {
    const long y = long(local.v) + GetScrollOffset().v;
    if (y < 0 || local.h < 0 || local.h >= GetSize().h) {
        return 0;
    }
    const size_t index = size_t(y / mRowHeight) + 1;
    return mModel.IsValid(index) ? index : 0;
}

void VtListView::MouseDown(PLPoint where, PLMouseButton) {
    mPressedRow = RowAt(where);
    mDragStart = where.v;
    mDragScroll = GetScrollOffset().v;
    mDragging = false;
}

void VtListView::MouseMove(PLPoint where, PLMouseButton) {
    if (mDragStart < 0) {
        return;
    }
    const int dy = where.v - mDragStart;
    if (mDragging || dy > kDragThreshold || dy < -kDragThreshold) {
        // Dragging the rows scrolls them; a drag never checks a row.
        mDragging = GetScrollRange() > 0;
        if (mDragging) {
            ScrollTo(mDragScroll - dy);
        }
    }
}

void VtListView::MouseUp(PLPoint where, PLMouseButton) {
    const size_t index = RowAt(where);
    const bool tap = !mDragging && index != 0 && index == mPressedRow;
    mPressedRow = 0;
    mDragStart = -1;
    mDragging = false;
    if (!tap) {
        return;
    }
    if (mTapChecks) {
        UserChoose(index);
    } else {
        UserFocus(index);
    }
}

bool VtListView::DoKeyCommand(char key, short, PLKeyModifiers) {
    const auto code = static_cast<uint8_t>(key);
    if (code == kPLKeyOk) {
        if (mModel.GetFocus() != 0) {
            UserChoose(mModel.GetFocus());
        }
        return true;
    }
    long delta = 0;
    if (!VtKeyStep(code, 1, std::max(1, GetSize().v / mRowHeight), delta)) {
        return false;
    }
    const size_t before = mModel.GetFocus();
    const bool wrap = mWrapFocus && (delta == 1 || delta == -1);
    if (mModel.MoveFocus(int(delta), wrap)) {
        SyncRow(before, true);
        SyncRow(mModel.GetFocus(), true);
        KeepInView(mModel.GetFocus());
        Notify(kVtListFocusNotice, mModel.GetFocus());
    }
    return true;
}

void VtListView::Draw(PLDrawContext& context) {
    // Rows follow the list's width when the list is resized.
    for (VtListRow* row : mRows) {
        if (row->GetSize().h != GetSize().h) {
            row->SetSize(PLSize(mRowHeight, GetSize().h), false);
        }
    }
    context.FillRect(GetBounds(), VtTheme::Current().FieldColor());
}

std::string VtListView::DumpExtra() const {
    std::string checked;
    for (size_t index : mModel.GetChecked()) {
        checked += (checked.empty() ? "" : ",") + std::to_string(index);
    }
    return "\"checked_rows\":[" + checked +
           "],\"focused_row\":" + std::to_string(mModel.GetFocus()) +
           ",\"row_count\":" + std::to_string(mRows.size());
}
