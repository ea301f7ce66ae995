// The parts every main view shares: the options menu, the view-switch menu and the bottom bar
// (options button, view-switch button, exit button) that send the user's wishes to the
// application object.
#pragma once

#include <cstdint>

#include "VtMenu.h"

class PLListener;
class PLView;

struct VtCalendarBarIds {
    uint32_t viewSwitchButton;  // the view's id + 2
    uint32_t exitButton;        // the view's id + 3
    uint32_t viewSwitchLabel;   // text of the view's own entry
};

// A menu with the given (label text id, item id) pairs, in order.
VtMenu* VtCalendarMakeMenu(uint32_t menuId, const uint32_t (*items)[2], int count);

// Adds the options button (11810; heard by `application` then `view`), the view-switch button
// (heard by `application`) and the exit button (heard by `application`) at the bottom of `view`.
void VtCalendarAddBottomBar(PLView* view, const VtCalendarBarIds& ids, PLMenu* optionsMenu,
                            PLMenu* viewMenu, PLListener* application);
