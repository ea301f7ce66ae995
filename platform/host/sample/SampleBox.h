// The sample application's basic pane: a coloured box with a frame and its text in the middle.
#pragma once

#include "PLPane.h"
#include "PLRGBColor.h"

class SampleBox : public PLPane {
public:
    SampleBox(uint32_t id, PLPoint location, PLSize size, PLRGBColor fill, const char* text);

    void SetFill(const PLRGBColor& fill);
    PLRGBColor GetFill() const { return mFill; }
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "SampleBox"; }

private:
    PLRGBColor mFill;
};
