// How far the up, down and page keys move a list's focus or a scrolled pane: a line or a page,
// backwards or forwards.
#pragma once

#include <cstdint>

#include "PLTypes.h"

// Sets `delta` for the four moving keys and answers true; other keys answer false.
inline bool VtKeyStep(uint8_t key, long line, long page, long& delta) {
    switch (key) {
        case kPLKeyUp:
            delta = -line;
            return true;
        case kPLKeyDown:
            delta = line;
            return true;
        case kPLKeyPageUp:
            delta = -page;
            return true;
        case kPLKeyPageDown:
            delta = page;
            return true;
        default:
            return false;
    }
}
