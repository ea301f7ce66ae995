// The colour choices of an event, kept in one table for every screen that paints or names them.
#include "event/VtCalendarColours.h"

namespace {

constexpr VtCalendarColourChoice kColours[kColourCount] = {
    {11544, 10262, {255, 204, 0}},  {11545, 10272, {255, 0, 0}},   {11546, 10282, {204, 0, 0}},
    {11547, 10292, {255, 153, 0}},  {11548, 10302, {0, 221, 0}},   {11549, 10312, {153, 153, 153}},
    {11550, 10322, {51, 204, 255}}, {11551, 10332, {255, 255, 0}}, {11552, 10342, {153, 51, 255}},
    {11553, 10352, {0, 136, 0}},
};

}  // namespace

const VtCalendarColourChoice* VtCalendarColourTable() {
    return kColours;
}

bool VtCalendarIsColourChoice(int64_t choice) {
    return choice >= kColourFirst && choice <= kColourLast;
}

const VtCalendarColourChoice& VtCalendarColourOf(int64_t choice) {
    if (!VtCalendarIsColourChoice(choice)) {
        return kColours[0];
    }
    return kColours[choice - kColourFirst];
}
