// The sample's key target.
#include "SampleKeyPane.h"

SampleKeyPane::SampleKeyPane(uint32_t id, PLPoint location, PLSize size)
    : SampleBox(id, location, size, PLRGBColor(200, 205, 215), "Key -") {}

bool SampleKeyPane::DoKeyCommand(char key, short, PLKeyModifiers) {
    SetString("Key " + std::to_string(int(uint8_t(key))));
    return true;
}
