// A month-like grid: ground, white grid lines, coloured bars, a framed cell and day numbers.
#pragma once

#include "PLView.h"

class DemoGridPane : public PLView {
public:
    DemoGridPane(uint32_t id, PLPoint location, PLSize size) : PLView(id, location, size) {}
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "DemoGridPane"; }
};
