// A pane the pen can drag around its parent: it starts tracking on pen-down, so that moves and
// the pen-up reach it wherever the pen goes.
#pragma once

#include "SampleBox.h"

class SampleDragPane : public SampleBox {
public:
    SampleDragPane(uint32_t id, PLPoint location, PLSize size);

    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "SampleDragPane"; }

private:
    void Follow(PLPoint where);

    PLPoint mGrab;  // where the pen took hold, in the pane
    bool mDragging = false;
};
