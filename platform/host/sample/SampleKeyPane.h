// The sample's key target: it shows the code of the last key it was given.
#pragma once

#include "SampleBox.h"

class SampleKeyPane : public SampleBox {
public:
    SampleKeyPane(uint32_t id, PLPoint location, PLSize size);
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    const char* GetClassName() const override { return "SampleKeyPane"; }
};
