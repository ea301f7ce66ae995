// The sample's draggable pane.
#include "SampleDragPane.h"

#include <algorithm>

SampleDragPane::SampleDragPane(uint32_t id, PLPoint location, PLSize size)
    : SampleBox(id, location, size, PLRGBColor(60, 150, 90), "Drag") {}

void SampleDragPane::MouseDown(PLPoint where, PLMouseButton) {
    mGrab = where;
    mDragging = true;
    StartTracking();
}

void SampleDragPane::Follow(PLPoint where) {
    PLPoint location = GetLocation() + (where - mGrab);
    if (PLPane* parent = GetParent()) {
        PLSize room = parent->GetSize() - GetSize();
        location.v = std::clamp(location.v, 0, std::max(0, room.v));
        location.h = std::clamp(location.h, 0, std::max(0, room.h));
    }
    SetLocation(location);
}

void SampleDragPane::MouseMove(PLPoint where, PLMouseButton) {
    if (mDragging) {
        Follow(where);
    }
}

void SampleDragPane::MouseUp(PLPoint where, PLMouseButton) {
    if (!mDragging) {
        return;
    }
    Follow(where);
    mDragging = false;
    StopTracking();
    PLPoint at = GetLocation();
    SetString(std::to_string(at.h) + "," + std::to_string(at.v));
}
