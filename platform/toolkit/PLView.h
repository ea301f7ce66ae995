// A pane that holds other panes: every screen and dialog of an application is a view.
#pragma once

#include "PLPane.h"

class PLView : public PLPane {
public:
    PLView(uint32_t id, PLPoint location, PLSize size) : PLPane(id, location, size) {}
    const char* GetClassName() const override { return "PLView"; }
};

// A view that paints itself from the current theme (background, frame) before its own drawing.
class PLThemeView : public PLView {
public:
    PLThemeView(uint32_t id, PLPoint location, PLSize size) : PLView(id, location, size) {}
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "PLThemeView"; }
};
