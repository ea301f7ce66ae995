// The input method's on-screen keyboard: a pane across the lower part of the screen (from y 180
// to the bottom) whose keys type into the input method's editor. A full keyboard (letters, shift,
// digits and signs) or, for digit-only input, a keypad.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "PLView.h"

class IMEManager;

class IMEKeyboard : public PLView {
public:
    static constexpr int kTop = 180;
    static constexpr int kHeight = kPLScreenHeight - kTop;

    IMEKeyboard(IMEManager& manager, bool keypad);
    // Tells the manager that its keyboard is gone (the root view may delete it with its other
    // panes before the view that opened it goes).
    ~IMEKeyboard() override;
    // The manager let go of this keyboard (it is closing): keys reach no manager from now on.
    void ForgetManager() { mManager = nullptr; }

    bool IsKeypad() const { return mKeypad; }

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "IMEKeyboard"; }

    struct Key {
        PLRect rect;
        std::string label;
        std::string input;  // typed text; empty for the special keys
        enum class Action { Type, Erase, Shift, Symbols, Letters, Done } action = Action::Type;
    };
    const std::vector<Key>& GetKeys() const { return mKeys; }

private:
    void BuildKeypad();
    void BuildLetters();
    void BuildSymbols();
    // A special key of a page: its label, what it does and what it types.
    struct PageKey {
        std::string label;
        Key::Action action;
        std::string input;
    };
    // Letters and symbols share one layout: three rows of characters, a key before the third
    // row, erase after it, and a bottom row with the page switch, space and done.
    void BuildPage(const std::array<const char*, 3>& rows, const PageKey& thirdRowLead,
                   const PageKey& pageSwitch);
    void AddRow(const char* characters, int top, int left, int keyWidth);
    void AddKey(const PLRect& rect, const std::string& label, Key::Action action,
                const std::string& input);
    int KeyAt(PLPoint local) const;
    void Use(const Key& key);

    IMEManager* mManager;
    bool mKeypad;
    bool mShift = false;
    bool mSymbols = false;
    std::vector<Key> mKeys;
    int mPressed = -1;
};
