// Basic constants of the toolkit: four-character codes, message kinds, key codes and modifiers.
#pragma once

#include <cstdint>

// Builds the 32-bit value of a four-character code, first character in the most significant byte:
// PLFourCC("ctrl") == 0x6374726C. Written as a function so that no multi-character literal is
// needed.
constexpr uint32_t PLFourCC(const char (&code)[5]) {
    return (uint32_t(uint8_t(code[0])) << 24) | (uint32_t(uint8_t(code[1])) << 16) |
           (uint32_t(uint8_t(code[2])) << 8) | uint32_t(uint8_t(code[3]));
}

// '????': fills parameters that mean nothing and selects any resource.
constexpr uint32_t kPLWildcard = 0x3F3F3F3F;

// Message kinds that the toolkit and the widget library send.
constexpr uint32_t kPLMsgControl = PLFourCC("ctrl");  // a control was used: sender id, value
constexpr uint32_t kPLMsgUp = PLFourCC("msup");       // a view asks for something / a value changed
constexpr uint32_t kPLMsgSelect = PLFourCC("msel");   // a menu entry was chosen
constexpr uint32_t kPLMsgValue = PLFourCC("valu");    // data or settings changed, with flags
constexpr uint32_t kPLMsgScroll = 0x6D637372;         // scroll ("rscm" as the platform numbers it)
constexpr uint32_t kPLMsgMouseDown = PLFourCC("mdwn");    // a pane was pressed (informational)
constexpr uint32_t kPLMsgEditPressed = PLFourCC("emup");  // an edit field was pressed
constexpr uint32_t kPLMsgEditPressedAlt = PLFourCC("pume");
constexpr uint32_t kPLMsgEditChanged = PLFourCC("MEMI");  // an edit field's text changed
constexpr uint32_t kPLMsgInputMethod = PLFourCC("IMEM");  // the input method changed state
constexpr uint32_t kPLClassMessage = PLFourCC("mesg");

// Hardware key codes of the phone.
enum PLKeyCode : uint8_t {
    kPLKeyUp = 17,
    kPLKeyOk = 18,
    kPLKeyDown = 19,
    kPLKeyLeft = 28,
    kPLKeyRight = 29,
    kPLKeyPageUp = 30,
    kPLKeyPageDown = 31,
};

enum PLKeyModifiers : uint32_t {
    kPLModNone = 0,
    kPLModShift = 1,
    kPLModControl = 2,
};

enum PLMouseButton : int32_t {
    kPLPen = 0,
};

// Resource types.
constexpr uint32_t kPLResBitmap = PLFourCC("bitm");
constexpr uint32_t kPLResBitmapFamily = PLFourCC("bitf");
constexpr uint32_t kPLResText = PLFourCC("text");

// Screen geometry of the phone.
constexpr int kPLScreenWidth = 240;
constexpr int kPLScreenHeight = 320;
constexpr int kPLStatusHeight = 45;
