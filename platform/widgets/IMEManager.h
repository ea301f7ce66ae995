// The input method. A view registers with it; a field's press makes the view open it for the
// field's inner editor (Open, then Attach). While open it shows the on-screen keyboard in the
// lower part of the screen and takes the event loop's typed text (desktop keys, the simulator's
// `type`), writing both into the editor within the field's limit and character filter. When it
// closes (its Done key, Close, or the view's release) it sends "IMEM" (a VtStateMessage with
// state kVtIMEClosed = 3) to the registered view's Listen.
#pragma once

#include <string_view>

class IMEKeyboard;
class PLView;
class VtTextEditor;

// Input masks for Open: bits of what the keyboard offers. A mask of exactly kIMEDigits shows the
// keypad; every other mask the full keyboard.
constexpr long kIMELowerCase = 1;
constexpr long kIMEDigits = 2;
constexpr long kIMEUpperCase = 4;
constexpr long kIMESymbols = 8;
constexpr long kIMEAll = 15;

class IMEManager {
public:
    IMEManager() = default;
    IMEManager(const IMEManager&) = delete;
    IMEManager& operator=(const IMEManager&) = delete;
    virtual ~IMEManager();

    // The view that hears "IMEM". Registering another view replaces it.
    void RegisterView(PLView* view);
    // Closes the input method if it is open for `view` and forgets the view.
    void ReleaseView(PLView* view);
    PLView* GetView() const { return mView; }

    // Shows the keyboard for `view` (registering it when none is) with an input mask. Returns
    // false when there is no screen to show it on.
    bool Open(long mode, PLView* view);
    // Directs the input to `editor` (the field's inner editor) and keeps it in view.
    void Attach(VtTextEditor* editor);
    // Hides the keyboard and sends "IMEM" state 3 to the view (nothing when it is not open).
    void Close();
    bool IsOpen() const { return mKeyboard != nullptr; }
    long GetMode() const { return mMode; }
    VtTextEditor* GetEditor() const { return mEditor; }

    // Typed input from the keyboard or the event loop ("\b" erases).
    void Type(std::string_view input);
    // The editor is going away.
    void EditorGone(VtTextEditor* editor);
    // The keyboard was deleted by its parent while open.
    void KeyboardGone(IMEKeyboard* keyboard);

private:
    void RemoveKeyboard();

    PLView* mView = nullptr;
    VtTextEditor* mEditor = nullptr;
    IMEKeyboard* mKeyboard = nullptr;  // owned by the root view while shown
    long mMode = kIMEAll;
};
