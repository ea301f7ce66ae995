// An input event for the event loop: pen, key, typed text, or a message from another application.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "PLMessage.h"
#include "PLPoint.h"
#include "PLTypes.h"

struct PLEvent {
    enum class Kind { None, PenDown, PenMove, PenUp, Key, Text, Message };

    Kind kind = Kind::None;
    PLPoint point;    // pen events, screen coordinates
    uint8_t key = 0;  // key events: the key code (17..31, or other codes)
    PLKeyModifiers modifiers = kPLModNone;
    std::string text;                    // text events: UTF-8; "\b" erases one character
    std::shared_ptr<PLMessage> message;  // messages from other applications
};
