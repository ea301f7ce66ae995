// A vertical scroll bar: step arrows at its ends (when asked for), a track and a thumb sized by
// the page against the range. Taps on the arrows move by the step, taps on the track by a page,
// and dragging the thumb follows the pen. The owner hears of every move through its callback.
#pragma once

#include <functional>

#include "PLControl.h"

class VtScrollBar : public PLControl {
public:
    VtScrollBar(uint32_t id, PLPoint location, PLSize size);

    // Pixels per arrow tap; `arrows` 1 shows the step arrows, 0 hides them.
    void SetStep(long step, long arrows = 1);
    long GetStep() const { return mStep; }
    void SetPage(long page);
    long GetPage() const { return mPage; }
    // The largest position (content height less the visible height).
    void SetRange(long range);
    long GetRange() const { return mRange; }
    // Clamped to 0..range.
    void SetPosition(long position, bool redraw = true);
    long GetPosition() const { return mPosition; }
    // Called with the new position after the user moved the bar.
    void SetOnScroll(std::function<void(long)> onScroll) { mOnScroll = std::move(onScroll); }

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtScrollBar"; }

private:
    PLRect TrackRect() const;
    PLRect ThumbRect() const;
    void UserMove(long position);

    long mStep = 30;
    bool mArrows = true;
    long mPage = 0;
    long mRange = 0;
    long mPosition = 0;
    int mDragOffset = -1;  // pen offset inside the thumb while dragging
    std::function<void(long)> mOnScroll;
};
