// The rows of a list and their state: a pane that stacks its rows, scrolls them, checks rows by
// the check mode and moves a focus. Taps focus and choose a row; keys up and down move the focus,
// ok chooses the focused row, page keys move by a page.
//
// Notices to the listeners (sender = the list's id): 80002 when the user changed the checked rows
// (value = the row), 80004 when the user moved the focus (value = the row). Changes made by the
// program (CheckRowByIndex and the like) send nothing.
#pragma once

#include <functional>
#include <vector>

#include "PLVector.h"
#include "PLView.h"
#include "VtListModel.h"

class VtListDataProvider;
class VtListRow;

constexpr uint32_t kVtListCheckNotice = 80002;
constexpr uint32_t kVtListFocusNotice = 80004;

class VtListView : public PLView {
public:
    VtListView(uint32_t id, PLPoint location, PLSize size, long checkMode, int rowHeight);
    ~VtListView() override;

    const VtListModel& GetModel() const { return mModel; }
    int GetRowHeight() const { return mRowHeight; }
    size_t GetRowCount() const { return mRows.size(); }

    // Rows: indexes are 1-based; 0 or past the end answers null / false / nothing.
    void AppendRow(VtListRow* row, bool redraw = true);
    void ClearAllRows(bool redraw = true);
    VtListRow* GetRowByIndex(size_t index) const;
    bool CheckRowByIndex(size_t index, bool redraw = true);
    bool UnCheckRowByIndex(size_t index, bool redraw = true);
    bool IsRowIndexChecked(size_t index) const;
    // Appends the checked indexes, ascending, to `out`; returns how many there are.
    size_t GetCheckedRows(PLVector<long>& out) const;
    size_t GetCheckedCount() const;
    bool FocusRowByIndex(size_t index, bool redraw = true);
    size_t GetFocusedRowIndex() const { return mModel.GetFocus(); }

    void SetWrapFocus(bool wrap) { mWrapFocus = wrap; }
    void SetTapChecks(bool tapChecks) { mTapChecks = tapChecks; }
    void SetSendNotices(bool send) { mSendNotices = send; }
    void SetDataProvider(VtListDataProvider* provider) { mProvider = provider; }
    // Refills the rows from the data provider, if there is one.
    void Reload();

    // Scrolling: the top row offset in pixels, clamped to the content.
    long GetScrollRange() const;
    void ScrollTo(long offset, bool redraw = true);
    long GetScrollPosition() const { return GetScrollOffset().v; }
    void SetOnScrolled(std::function<void()> onScrolled) { mOnScrolled = std::move(onScrolled); }

    // What a tap on a row does: focus it and, where the mode allows, choose it.
    void UserChoose(size_t index);

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    const char* GetClassName() const override { return "VtListView"; }
    std::string DumpExtra() const override;

private:
    size_t RowAt(PLPoint local) const;
    void UserFocus(size_t index);
    void Notify(uint32_t notice, size_t index);
    void SyncRow(size_t index, bool redraw);
    void KeepInView(size_t index);

    VtListModel mModel;
    std::vector<VtListRow*> mRows;  // sub-panes, in order
    int mRowHeight;
    bool mWrapFocus = false;
    bool mTapChecks = true;
    bool mSendNotices = true;
    size_t mPressedRow = 0;
    int mDragStart = -1;  // pen y at the press, for drag scrolling
    long mDragScroll = 0;
    bool mDragging = false;
    VtListDataProvider* mProvider = nullptr;
    std::function<void()> mOnScrolled;
};
