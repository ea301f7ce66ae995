// Scroll bars: arrows, track and thumb; taps step or page, the thumb follows the pen.
#include "VtScrollBar.h"

#include <algorithm>

#include "PLDrawContext.h"
#include "VtTheme.h"

VtScrollBar::VtScrollBar(uint32_t id, PLPoint location, PLSize size)
    : PLControl(id, location, size) {}

void VtScrollBar::SetStep(long step, long arrows) {
    mStep = std::max(1L, step);
    mArrows = arrows != 0;
    Redraw();
}

void VtScrollBar::SetPage(long page) {
    mPage = std::max(0L, page);
    Redraw();
}

void VtScrollBar::SetRange(long range) {
    mRange = std::max(0L, range);
    mPosition = std::min(mPosition, mRange);
    Redraw();
}

void VtScrollBar::SetPosition(long position, bool redraw) {
    const long clamped = std::clamp(position, 0L, mRange);
    if (clamped != mPosition) {
        mPosition = clamped;
        if (redraw) {
            Redraw();
        }
    }
}

PLRect VtScrollBar::TrackRect() const {
    const int arrow = mArrows ? std::min(GetSize().h, GetSize().v / 3) : 0;
    return {arrow, 0, GetSize().v - arrow, GetSize().h};
}

PLRect VtScrollBar::ThumbRect() const {
    const PLRect track = TrackRect();
    if (mRange <= 0 || track.Height() <= 0) {
        return track;
    }
    const long page = mPage > 0 ? mPage : track.Height();
    const int height = std::clamp(int(long(track.Height()) * page / (mRange + page)), 12,
                                  std::max(12, track.Height()));
    const int top = track.top + int(long(track.Height() - height) * mPosition / mRange);
    return {top, track.left, top + height, track.right};
}

void VtScrollBar::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const PLRect bounds = GetBounds();
    context.FillRect(bounds, {238, 240, 243});
    context.DrawLine({0, 0}, {bounds.bottom - 1, 0}, {214, 217, 222});
    const bool movable = mRange > 0 && IsActive();
    const PLRGBColor arrowColor = movable ? PLRGBColor{70, 74, 84} : PLRGBColor{180, 184, 190};
    if (mArrows) {
        const PLRect track = TrackRect();
        const PLRect up{0, 1, track.top, bounds.right};
        const PLRect down{track.bottom, 1, bounds.bottom, bounds.right};
        theme.DrawArrow(context, up, VtArrow::Up, arrowColor);
        theme.DrawArrow(context, down, VtArrow::Down, arrowColor);
    }
    if (mRange > 0) {
        PLRect thumb = ThumbRect();
        thumb.Inset(1, 4);
        thumb.left += 1;
        theme.DrawFace(context, thumb, {186, 191, 200}, {150, 156, 167}, {128, 134, 145});
    }
}

void VtScrollBar::UserMove(long position) {
    const long before = mPosition;
    SetPosition(position, true);
    if (mPosition != before && mOnScroll) {
        mOnScroll(mPosition);
    }
}

void VtScrollBar::MouseDown(PLPoint where, PLMouseButton) {
    mDragOffset = -1;
    if (mRange <= 0 || !IsActive()) {
        return;
    }
    const PLRect track = TrackRect();
    const PLRect thumb = ThumbRect();
    const long page = mPage > 0 ? mPage : track.Height();
    if (where.v < track.top) {
        UserMove(mPosition - mStep);
    } else if (where.v >= track.bottom) {
        UserMove(mPosition + mStep);
    } else if (where.v < thumb.top) {
        UserMove(mPosition - page);
    } else if (where.v >= thumb.bottom) {
        UserMove(mPosition + page);
    } else {
        mDragOffset = where.v - thumb.top;
    }
}

void VtScrollBar::MouseMove(PLPoint where, PLMouseButton) {
    if (mDragOffset < 0) {
        return;
    }
    const PLRect track = TrackRect();
    const PLRect thumb = ThumbRect();
    const int travel = track.Height() - thumb.Height();
    if (travel <= 0) {
        return;
    }
    const int top = std::clamp(where.v - mDragOffset, track.top, track.top + travel);
    UserMove(long(top - track.top) * mRange / travel);
}

void VtScrollBar::MouseUp(PLPoint where, PLMouseButton button) {
    MouseMove(where, button);
    mDragOffset = -1;
}
