// The demo's title band and its picture strip: text in both sizes, and alpha-blended bitmaps.
#pragma once

#include "PLBitmap.h"
#include "PLView.h"

class DemoTextPane : public PLView {
public:
    DemoTextPane(uint32_t id, PLPoint location, PLSize size) : PLView(id, location, size) {}
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "DemoTextPane"; }
};

class DemoPicturePane : public PLView {
public:
    DemoPicturePane(uint32_t id, PLPoint location, PLSize size);
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "DemoPicturePane"; }

private:
    PLBitmap mBand;   // a narrow picture stretched across by copying it column by column
    PLBitmap mBadge;  // a round badge with soft, semi-transparent edges
};
