// The input method: keyboard pane, typed-text sink, editor attachment and the closing notice.
#include "IMEManager.h"

#include "IMEKeyboard.h"
#include "PLAppContext.h"
#include "PLEventLoop.h"
#include "PLView.h"
#include "VtModalRunner.h"
#include "VtStateMessage.h"
#include "VtTextEditor.h"

IMEManager::~IMEManager() {
    if (IsOpen()) {
        RemoveKeyboard();
    }
    if (mEditor != nullptr) {
        mEditor->DetachIME(this);
        mEditor = nullptr;
    }
}

void IMEManager::RegisterView(PLView* view) {
    mView = view;
}

void IMEManager::ReleaseView(PLView* view) {
    if (view == nullptr || view != mView) {
        return;
    }
    // Closed without a notice: the view is usually on its way out.
    if (IsOpen()) {
        RemoveKeyboard();
    }
    if (mEditor != nullptr) {
        mEditor->DetachIME(this);
        mEditor = nullptr;
    }
    mView = nullptr;
}

bool IMEManager::Open(long mode, PLView* view) {
    PLPane* root = VtModalRunner::Root();
    if (root == nullptr) {
        return false;
    }
    if (view != nullptr) {
        mView = view;
    }
    const bool keypad = mode == kIMEDigits;
    mMode = mode;
    if (IsOpen() && mKeyboard->IsKeypad() != keypad) {
        RemoveKeyboard();
    }
    if (!IsOpen()) {
        mKeyboard = new IMEKeyboard(*this, keypad);
        root->AddSubPane(mKeyboard, true);
        PLAppContext::GetInstance()->GetEventLoop().SetTextSink(
            [this](const std::string& text) { Type(text); });
        if (mView != nullptr) {
            VtStateMessage opened(kPLMsgInputMethod, mView->GetID(), kVtIMEOpened);
            mView->Listen(&opened);
        }
    }
    return true;
}

void IMEManager::Attach(VtTextEditor* editor) {
    if (mEditor == editor) {
        if (editor != nullptr) {
            editor->RevealCaret();
        }
        return;
    }
    if (mEditor != nullptr) {
        mEditor->DetachIME(this);
    }
    mEditor = editor;
    if (mEditor != nullptr) {
        mEditor->AttachIME(this);
    }
}

void IMEManager::RemoveKeyboard() {
    // Deferred: the keyboard may be closing itself from its own pen handler.
    mKeyboard->ForgetManager();
    mKeyboard->Close(true, true);
    mKeyboard = nullptr;
    PLAppContext::GetInstance()->GetEventLoop().SetTextSink(nullptr);
}

void IMEManager::KeyboardGone(IMEKeyboard* keyboard) {
    if (keyboard == nullptr || keyboard != mKeyboard) {
        return;
    }
    mKeyboard = nullptr;
    PLAppContext::GetInstance()->GetEventLoop().SetTextSink(nullptr);
}

void IMEManager::Close() {
    if (!IsOpen()) {
        return;
    }
    RemoveKeyboard();
    if (mEditor != nullptr) {
        mEditor->DetachIME(this);
        mEditor = nullptr;
    }
    if (mView != nullptr) {
        VtStateMessage closed(kPLMsgInputMethod, mView->GetID(), kVtIMEClosed);
        mView->Listen(&closed);
    }
}

void IMEManager::Type(std::string_view input) {
    if (mEditor == nullptr || !mEditor->IsVisible()) {
        // The field went away under the keyboard: nothing to write into.
        Close();
        return;
    }
    if (mMode != kIMEDigits) {
        mEditor->TypeText(input);
        return;
    }
    // The keypad offers digits only, whatever arrives from the desktop keyboard.
    std::string digits;
    for (char c : input) {
        if ((c >= '0' && c <= '9') || c == '\b') {
            digits += c;
        }
    }
    mEditor->TypeText(digits);
}

void IMEManager::EditorGone(VtTextEditor* editor) {
    if (mEditor == editor) {
        mEditor = nullptr;
    }
}
