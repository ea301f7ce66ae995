// The on-screen keyboard: key layouts, drawing and taps.
#include "IMEKeyboard.h"

#include <cctype>

#include "IMEManager.h"
#include "PLDrawContext.h"
#include "VtPlatformText.h"
#include "VtTheme.h"

namespace {
constexpr int kRowHeight = kPLScreenHeight / 8 - 5;  // 35: four rows fill the keyboard
constexpr int kKeyWidth = 24;
constexpr uint32_t kKeyboardID = 50020;

// The label of a special key, from the platform texts.
std::string Label(uint32_t id) {
    return VtPlatformText::Get(id).str();
}
}  // namespace

IMEKeyboard::IMEKeyboard(IMEManager& manager, bool keypad)
    : PLView(kKeyboardID, PLPoint(kTop, 0), PLSize(kHeight, kPLScreenWidth)),
      mManager(&manager),
      mKeypad(keypad) {
    if (mKeypad) {
        BuildKeypad();
    } else {
        BuildLetters();
    }
}

IMEKeyboard::~IMEKeyboard() {
    if (mManager != nullptr) {
        mManager->KeyboardGone(this);
    }
}

void IMEKeyboard::AddKey(const PLRect& rect, const std::string& label, Key::Action action,
                         const std::string& input) {
    mKeys.push_back({rect, label, input, action});
}

void IMEKeyboard::AddRow(const char* characters, int top, int left, int keyWidth) {
    for (const char* c = characters; *c != '\0'; ++c) {
        std::string text(1, *c);
        if (mShift && !mSymbols) {
            text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
        }
        AddKey({top, left, top + kRowHeight, left + keyWidth}, text, Key::Action::Type, text);
        left += keyWidth;
    }
}

void IMEKeyboard::BuildKeypad() {
    mKeys.clear();
    const int width = kPLScreenWidth / 3;
    const char* rows[3] = {"123", "456", "789"};
    for (int r = 0; r < 3; ++r) {
        AddRow(rows[r], r * kRowHeight, 0, width);
    }
    const int top = 3 * kRowHeight;
    AddKey({top, 0, top + kRowHeight, width}, Label(VtPlatformText::kKeyDelete), Key::Action::Erase,
           "");
    AddKey({top, width, top + kRowHeight, 2 * width}, "0", Key::Action::Type, "0");
    AddKey({top, 2 * width, top + kRowHeight, kPLScreenWidth}, Label(VtPlatformText::kKeyDone),
           Key::Action::Done, "");
}

void IMEKeyboard::BuildLetters() {
    mSymbols = false;
    BuildPage({"qwertyuiop", "asdfghjkl", "zxcvbnm"},
              {Label(VtPlatformText::kKeyShift), Key::Action::Shift, ""},
              {Label(VtPlatformText::kKeySymbols), Key::Action::Symbols, ""});
}

void IMEKeyboard::BuildSymbols() {
    mSymbols = true;
    BuildPage({"1234567890", "-/:;()@&\"", "?!'%+=*"}, {"#", Key::Action::Type, "#"},
              {Label(VtPlatformText::kKeyLetters), Key::Action::Letters, ""});
}

void IMEKeyboard::BuildPage(const std::array<const char*, 3>& rows, const PageKey& thirdRowLead,
                            const PageKey& pageSwitch) {
    mKeys.clear();
    AddRow(rows[0], 0, 0, kKeyWidth);
    AddRow(rows[1], kRowHeight, kKeyWidth / 2, kKeyWidth);
    const int third = 2 * kRowHeight;
    AddKey({third, 0, third + kRowHeight, 36}, thirdRowLead.label, thirdRowLead.action,
           thirdRowLead.input);
    AddRow(rows[2], third, 36, kKeyWidth);
    AddKey({third, 36 + 7 * kKeyWidth, third + kRowHeight, kPLScreenWidth},
           Label(VtPlatformText::kKeyDelete), Key::Action::Erase, "");
    const int fourth = 3 * kRowHeight;
    AddKey({fourth, 0, fourth + kRowHeight, 48}, pageSwitch.label, pageSwitch.action,
           pageSwitch.input);
    AddKey({fourth, 48, fourth + kRowHeight, 72}, ",", Key::Action::Type, ",");
    AddKey({fourth, 72, fourth + kRowHeight, 168}, Label(VtPlatformText::kKeySpace),
           Key::Action::Type, " ");
    AddKey({fourth, 168, fourth + kRowHeight, 192}, ".", Key::Action::Type, ".");
    AddKey({fourth, 192, fourth + kRowHeight, kPLScreenWidth}, Label(VtPlatformText::kKeyDone),
           Key::Action::Done, "");
}

int IMEKeyboard::KeyAt(PLPoint local) const {
    for (size_t i = 0; i < mKeys.size(); ++i) {
        if (mKeys[i].rect.Contains(local)) {
            return int(i);
        }
    }
    return -1;
}

void IMEKeyboard::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    theme.FillGradient(context, GetBounds(), {70, 75, 86}, {44, 48, 56});
    for (size_t i = 0; i < mKeys.size(); ++i) {
        const Key& key = mKeys[i];
        const PLRect face = key.rect.Insetted(3, 2);
        const bool special = key.action != Key::Action::Type || key.input == " ";
        if (int(i) == mPressed) {
            theme.DrawFace(context, face, {255, 190, 90}, {250, 140, 0}, {170, 90, 0});
        } else if (key.action == Key::Action::Done) {
            theme.DrawFace(context, face, {60, 146, 255}, {0, 96, 230}, {0, 60, 160});
        } else if (special) {
            theme.DrawFace(context, face, {178, 184, 196}, {150, 156, 168}, {30, 32, 38});
        } else {
            theme.DrawFace(context, face, {255, 255, 255}, {226, 229, 235}, {30, 32, 38});
        }
        const bool shiftOn = key.action == Key::Action::Shift && mShift;
        const PLRGBColor color = key.action == Key::Action::Done || int(i) == mPressed
                                     ? VtTheme::kWhite
                                     : (shiftOn ? VtTheme::kBlue : theme.TextColor());
        theme.DrawText(context, key.label, face, color, kPLJustifyCenter, nullptr, 0);
    }
}

void IMEKeyboard::MouseDown(PLPoint where, PLMouseButton) {
    mPressed = KeyAt(where);
    Redraw();
}

void IMEKeyboard::MouseMove(PLPoint where, PLMouseButton) {
    const int key = KeyAt(where);
    if (key != mPressed) {
        mPressed = key;
        Redraw();
    }
}

void IMEKeyboard::MouseUp(PLPoint where, PLMouseButton) {
    const int key = KeyAt(where);
    const int pressed = mPressed;
    mPressed = -1;
    Redraw();
    if (key >= 0 && key == pressed) {
        // A copy: using a key may rebuild the layout.
        const Key used = mKeys[size_t(key)];
        Use(used);
    }
}

void IMEKeyboard::Use(const Key& key) {
    switch (key.action) {
        case Key::Action::Type:
            if (mManager != nullptr) {
                mManager->Type(key.input);
            }
            if (mShift && !mSymbols) {
                // Shift holds for one letter.
                mShift = false;
                BuildLetters();
                Redraw();
            }
            break;
        case Key::Action::Erase:
            if (mManager != nullptr) {
                mManager->Type("\b");
            }
            break;
        case Key::Action::Shift:
            mShift = !mShift;
            BuildLetters();
            Redraw();
            break;
        case Key::Action::Symbols:
            BuildSymbols();
            Redraw();
            break;
        case Key::Action::Letters:
            BuildLetters();
            Redraw();
            break;
        case Key::Action::Done:
            // The manager takes the keyboard off the screen; nothing of it is touched afterwards.
            if (mManager != nullptr) {
                mManager->Close();
            }
            break;
    }
}
