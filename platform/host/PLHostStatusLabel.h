// One text of the status area (the time, the date): its string drawn in the status area's colours.
#pragma once

#include "PLPane.h"

class PLHostStatusLabel : public PLPane {
public:
    PLHostStatusLabel(uint32_t id, PLPoint location, PLSize size, uint32_t fontCode,
                      long justification);
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "PLHostStatusLabel"; }

private:
    uint32_t mFontCode;
    long mJustification;
};
