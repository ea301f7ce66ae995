// The base of the library's dialogs: a box on top of the root view, run modally in a nested event
// loop. The dialog pane covers the whole screen so that nothing below takes taps while it is up;
// only its box is painted.
//
// ModalDialog returns the id of the button that closed the dialog, or kVtDialogNoButton when it
// closed otherwise (its display time ran out, or the application is shutting down). When a button
// closes it, the dialog also sends "ctrl" (sender = the button's id, value = the dialog's user
// message id) to its listeners. Keys: left and right move the button focus, ok presses the focused
// button.
#pragma once

#include <cstdint>
#include <vector>

#include "PLView.h"

class VtButton;

constexpr long kVtDialogNoButton = -1;

class VtBaseDialog : public PLView {
public:
    // `boxSize`: height and width of the box (a height of 0 is fitted by the subclass).
    VtBaseDialog(uint32_t id, PLSize boxSize);
    ~VtBaseDialog() override;

    // Shows the dialog, waits until it closes and takes it off the screen. Returns the result.
    long ModalDialog();
    // Closes the dialog with a result (from a button, a key or a timer).
    void EndModal(long result);
    bool IsModalRunning() const { return mRunning; }
    long GetResult() const { return mResult; }
    // With a display time (milliseconds, 0 none) the dialog closes itself after it.
    void SetDisplayTime(long milliseconds) { mDisplayTime = milliseconds; }
    long GetDisplayTime() const { return mDisplayTime; }
    // Modal-owned (the default): the caller deletes the dialog after ModalDialog. Otherwise
    // ModalDialog closes it for deletion and the caller must not touch it afterwards.
    void SetModalOwned(bool owned) { mModalOwned = owned; }
    bool IsModalOwned() const { return mModalOwned; }
    void SetUserMessageID(uint32_t id) { mUserMessageID = id; }
    uint32_t GetUserMessageID() const { return mUserMessageID; }
    // The button that the ok key presses in pickers (whose own keys move the focus).
    void SetAcceptID(uint32_t id) { mAcceptID = id; }
    uint32_t GetAcceptID() const { return mAcceptID; }

    // Adds a button to the row at the bottom of the box (left to right).
    VtButton* AddButton(uint32_t id, const PLBasicString<char>& label);
    const std::vector<VtButton*>& GetButtons() const { return mButtons; }
    // The box in dialog (= screen) coordinates.
    const PLRect& GetBox() const { return mBox; }
    // Sets the box size and centres it in the application area below the status bar.
    void SetBoxSize(PLSize size);

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtBaseDialog"; }

    static constexpr int kTitleHeight = 29;
    static constexpr int kButtonRowHeight = 44;

protected:
    // Paints what lies inside the box between the title band and the buttons.
    virtual void DrawContent(PLDrawContext& context, const PLRect& area);
    // Keys other than the button focus keys; true when handled.
    virtual bool HandleKey(uint8_t key);
    // The area between the title band and the button row, in dialog coordinates.
    PLRect ContentArea() const;
    void SetTitle(const PLBasicString<char>& title) { mTitle = title; }
    const PLBasicString<char>& GetTitle() const { return mTitle; }
    void LayoutButtons();
    // Presses the button with the id as a tap would; false when there is none.
    bool PressButton(uint32_t id);

private:
    void MoveButtonFocus(int delta);

    PLRect mBox;
    PLBasicString<char> mTitle;
    std::vector<VtButton*> mButtons;  // sub-panes
    size_t mFocus = 0;
    bool mRunning = false;
    long mResult = kVtDialogNoButton;
    long mDisplayTime = 0;
    bool mModalOwned = true;
    uint32_t mUserMessageID = 0x3F3F3F3F;
    uint32_t mAcceptID = 0;
};
