// A choice control over a menu: shows the menu's selected entry (with its swatch for colour
// entries) and opens the menu below itself when tapped. The control's value is the chosen entry's
// id (its value); choosing sends "msel" with the control's id as sender and that value.
#pragma once

#include "PLControl.h"

class PLMenu;

class VtComboControl : public PLControl {
public:
    VtComboControl(uint32_t id, PLPoint location, PLSize size, PLMenu* menu, long captionWidth,
                   const PLBasicString<char>& caption);

    // The menu is not owned.
    PLMenu* GetMenu() const { return mMenu; }
    void SetMenu(PLMenu* menu, bool redraw = true);
    // Sets the value and selects the entry with that id in the menu, when there is one.
    void SetValue(long value, bool redraw = true) override;
    // Takes the value from the menu's selected entry (after the caller selected by index).
    void SyncFromMenu(bool redraw = true);
    // The label shown: the menu's selected entry, or empty.
    PLBasicString<char> GetShownLabel() const;

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtComboControl"; }

    // Opens the menu as a tap does (keys and tests use it).
    void OpenMenu();

private:
    PLRect BoxRect() const;

    PLMenu* mMenu;
    long mCaptionWidth;
    PLBasicString<char> mCaption;
    bool mArmed = false;  // the pen went down on the box
};
