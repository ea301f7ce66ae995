// A scrolling area: a content pane (GetContentPane: add the scrolled panes there) and a vertical
// scroll bar at the right. The content scrolls by "rscm" requests to the content pane (or to the
// container), by the bar, by page and arrow keys, and, with auto-scroll, to keep the edit field
// being typed into in view. After the user scrolled, the container sends "rscm"
// (a PLScrollerMessage with its id and the new offset) to its listeners.
//
// Panes added to the container (AddSubPane, InsertSubPane) go to its content pane, and
// RemoveSubPane takes them from there, so that views can hand their rows to the container itself.
// These calls must be made through a VtScrollContainer pointer: the toolkit's are not virtual.
//
// The container is the "scroller" (GetScroller answers the container itself): SetAutoScroll and
// EnsureVisible belong to it. Its size may be changed at any time (the editors shrink it while the
// input method is up): SetSize lays out the content pane and the bar at once, so that the content
// pane's size is the visible height straight away.
#pragma once

#include "PLRect.h"
#include "PLView.h"

class VtScrollBar;
class VtScrollPane;

class VtScrollContainer : public PLView {
public:
    VtScrollContainer(uint32_t id, PLPoint location, PLSize size, int barWidth, bool alwaysShowBar,
                      const PLRect& margins, bool followFocus);

    VtScrollPane* GetContentPane() const { return mContent; }
    VtScrollBar* GetScrollBar() const { return mBar; }
    VtScrollContainer* GetScroller() { return this; }

    // Sub-panes of the content pane; the content pane and the bar themselves cannot be removed.
    void AddSubPane(PLPane* pane, bool redraw = true);
    void InsertSubPane(PLPane* pane, size_t index, bool redraw = true);
    bool RemoveSubPane(PLPane* pane);
    void SetSize(PLSize size, bool redraw = true);

    // With auto-scroll, fields that get the input method are scrolled into view.
    void SetAutoScroll(bool autoScroll) { mAutoScroll = autoScroll; }
    bool IsAutoScroll() const { return mAutoScroll; }
    // A fixed scroll range (the largest offset); -1 (the default) derives it from the content.
    void SetScrollRange(long range) { mFixedRange = range; }
    long GetScrollRange() const;
    // The height of the visible part of the content.
    long GetVisibleHeight() const;
    long GetScrollPosition() const;
    // Scrolls to an offset (clamped); `report` sends "rscm" to the listeners.
    void ScrollTo(long offset, bool report, bool redraw = true);
    // Scrolls the least needed to show `pane` (a descendant of the content pane).
    void EnsureVisible(const PLPane& pane);

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtScrollContainer"; }

    // Places the content pane and the bar for the current size (done by itself when resized,
    // before it draws and whenever it scrolls; call it after the content grew or shrank).
    void Layout();

private:
    bool BarShown() const;

    VtScrollPane* mContent;  // sub-pane
    VtScrollBar* mBar;       // sub-pane
    int mBarWidth;
    bool mAlwaysShowBar;
    PLRect mMargins;
    bool mAutoScroll = false;
    long mFixedRange = -1;
};
