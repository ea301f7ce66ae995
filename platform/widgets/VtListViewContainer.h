// A list with its scroll bar: the pane that views add. It forwards the row operations to its
// list (GetListView) and keeps the bar in step with the list's scrolling. Keys sent to the
// container move the list's focus.
#pragma once

#include "VtListView.h"

class VtScrollBar;

class VtListViewContainer : public PLView {
public:
    VtListViewContainer(uint32_t id, PLPoint location, PLSize size, long checkMode,
                        bool showScrollBar, int scrollBarWidth, int rowHeight);

    VtListView* GetListView() const { return mList; }
    VtScrollBar* GetScrollBar() const { return mBar; }

    void AppendRow(VtListRow* row, bool redraw = true);
    void ClearAllRows(bool redraw = true);
    VtListRow* GetRowByIndex(size_t index) const;
    bool CheckRowByIndex(size_t index, bool redraw = true);
    bool UnCheckRowByIndex(size_t index, bool redraw = true);
    bool IsRowIndexChecked(size_t index) const;
    size_t GetCheckedRows(PLVector<long>& out) const;
    bool FocusRowByIndex(size_t index, bool redraw = true);
    size_t GetFocusedRowIndex() const;
    size_t GetRowCount() const;

    void Draw(PLDrawContext& context) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    const char* GetClassName() const override { return "VtListViewContainer"; }
    std::string DumpExtra() const override;

private:
    void Layout();
    void SyncBar();

    VtListView* mList;  // sub-pane
    VtScrollBar* mBar;  // sub-pane
    bool mShowBar;
    int mBarWidth;
    PLSize mLaidOut{-1, -1};
};
