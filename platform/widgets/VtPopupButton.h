// A button that opens a popup menu (the options button and the text popup buttons of the bottom
// bar). Choosing an entry selects it in the menu and sends "msel" to the listeners with the
// button's id as sender and the chosen entry's id as value. A button without a menu, or whose menu
// has no entries, opens nothing.
#pragma once

#include "VtButton.h"

class PLMenu;

// Where the popup opens relative to the button.
constexpr long kVtPopupDown = 0;
constexpr long kVtPopupUp = 1;

class VtPopupButton : public VtButton {
public:
    VtPopupButton(uint32_t id, PLPoint location, PLSize size, VtButtonStyle style,
                  const PLBasicString<char>& text, PLMenu* menu, long direction);

    // The menu is not owned (views own their menus).
    void SetMenu(PLMenu* menu) { mMenu = menu; }
    PLMenu* GetMenu() const { return mMenu; }
    // With `follows` the button's label becomes the chosen entry's label.
    void SetLabelFollowsSelection(bool follows) { mLabelFollows = follows; }
    // With `mark` the popup shows the menu's selected entry with a tick.
    void SetMarkSelected(bool mark) { mMarkSelected = mark; }

    const char* GetClassName() const override { return "VtPopupButton"; }

protected:
    void Activate() override;

private:
    PLMenu* mMenu;
    long mDirection;
    bool mLabelFollows = false;
    bool mMarkSelected = true;
};
