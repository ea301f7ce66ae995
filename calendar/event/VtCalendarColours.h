// The ten colour choices an event can carry: the command id stored in the record, the label of its
// menu entry and its swatch. Month marks, week bars, the form's colour menu and the detail view all
// read this one table, so a colour looks and is named the same on every screen.
#pragma once

#include <cstdint>

#include "PLRGBColor.h"

constexpr uint32_t kColourFirst = 11544;  // also the default choice
constexpr uint32_t kColourLast = 11553;
constexpr int kColourCount = kColourLast - kColourFirst + 1;

struct VtCalendarColourChoice {
    uint32_t commandID;
    uint32_t labelID;
    PLRGBColor swatch;
};

// The table in menu order (11544 first).
const VtCalendarColourChoice* VtCalendarColourTable();

// True for a stored value that names one of the ten choices.
bool VtCalendarIsColourChoice(int64_t choice);

// The choice itself, or the default for a value that names none (a record written by another
// program, or damaged): drawing never fails on a stored colour.
const VtCalendarColourChoice& VtCalendarColourOf(int64_t choice);

// The swatch of a stored colour value, the default's for an unknown one.
inline PLRGBColor VtCalendarEventColour(int64_t choice) {
    return VtCalendarColourOf(choice).swatch;
}
