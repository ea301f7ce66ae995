// Dialog base: the box, its buttons, button focus by keys, and the modal run.
#include "VtBaseDialog.h"

#include <algorithm>

#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "VtButton.h"
#include "VtModalRunner.h"
#include "VtTheme.h"

namespace {
constexpr int kButtonHeight = 32;
constexpr int kButtonGap = 8;
}  // namespace

VtBaseDialog::VtBaseDialog(uint32_t id, PLSize boxSize)
    : PLView(id, PLPoint(0, 0), PLSize(kPLScreenHeight, kPLScreenWidth)) {
    SetBoxSize(boxSize);
}

VtBaseDialog::~VtBaseDialog() = default;

void VtBaseDialog::SetBoxSize(PLSize size) {
    const int area = kPLScreenHeight - kPLStatusHeight;
    const int height = std::clamp(size.v <= 0 ? 120 : size.v, 60, area);
    const int width = std::clamp(size.h <= 0 ? 228 : size.h, 100, kPLScreenWidth);
    const int top = kPLStatusHeight + (area - height) / 2;
    const int left = (kPLScreenWidth - width) / 2;
    mBox = PLRect(top, left, top + height, left + width);
    LayoutButtons();
    Redraw();
}

VtButton* VtBaseDialog::AddButton(uint32_t id, const PLBasicString<char>& label) {
    auto* button = new VtButton(id, PLPoint(0, 0), PLSize(kButtonHeight, 60), VtButtonStyle::Bar,
                                nullptr, label, 1);
    button->AddListener(this);
    AddSubPane(button, false);
    mButtons.push_back(button);
    LayoutButtons();
    return button;
}

void VtBaseDialog::LayoutButtons() {
    const int count = int(mButtons.size());
    if (count == 0) {
        return;
    }
    const int width = (mBox.Width() - kButtonGap * (count + 1)) / count;
    const int top = mBox.bottom - kButtonGap - kButtonHeight;
    for (int i = 0; i < count; ++i) {
        mButtons[size_t(i)]->SetLocation(
            PLPoint(top, mBox.left + kButtonGap + i * (width + kButtonGap)), false);
        mButtons[size_t(i)]->SetSize(PLSize(kButtonHeight, std::max(1, width)), false);
    }
}

PLRect VtBaseDialog::ContentArea() const {
    PLRect area = mBox.Insetted(1, 1);
    if (!mTitle.IsEmpty()) {
        area.top = mBox.top + kTitleHeight;
    } else {
        area.top += 3;
    }
    if (!mButtons.empty()) {
        area.bottom = mBox.bottom - kButtonRowHeight;
    }
    return area;
}

long VtBaseDialog::ModalDialog() {
    if (mRunning) {
        return kVtDialogNoButton;
    }
    mRunning = true;
    mResult = kVtDialogNoButton;
    PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
    const uint32_t timer =
        mDisplayTime > 0 ? loop.AddTimer(mDisplayTime, [this] { EndModal(kVtDialogNoButton); }) : 0;
    VtModalRunner::Run(*this, [this] { return !mRunning; });
    if (timer != 0) {
        loop.CancelTimer(timer);
    }
    mRunning = false;
    const long result = mResult;
    if (!mModalOwned) {
        Close(true, false);
    }
    return result;
}

void VtBaseDialog::EndModal(long result) {
    mResult = result;
    mRunning = false;
}

void VtBaseDialog::Listen(PLMessage* message) {
    if (message != nullptr && message->GetMessageID() == kPLMsgControl) {
        const uint32_t sender = message->GetSenderID();
        for (const VtButton* button : mButtons) {
            if (button->GetID() == sender) {
                EndModal(long(sender));
                PLMessage closed(kPLMsgControl, sender, mUserMessageID, kEmptyString, kEmptyString);
                BroadcastMessage(&closed);
                return;
            }
        }
    }
    PLView::Listen(message);
}

void VtBaseDialog::MoveButtonFocus(int delta) {
    if (mButtons.empty()) {
        return;
    }
    const int count = int(mButtons.size());
    mFocus = size_t(std::clamp(int(mFocus) + delta, 0, count - 1));
    Redraw();
}

bool VtBaseDialog::DoKeyCommand(char key, short, PLKeyModifiers) {
    const auto code = static_cast<uint8_t>(key);
    if (HandleKey(code)) {
        return true;
    }
    if (code == kPLKeyLeft) {
        MoveButtonFocus(-1);
    } else if (code == kPLKeyRight) {
        MoveButtonFocus(1);
    } else if (code == kPLKeyOk && mFocus < mButtons.size()) {
        mButtons[mFocus]->Press();
    }
    // A modal dialog keeps every key from the views below.
    return true;
}

bool VtBaseDialog::PressButton(uint32_t id) {
    for (VtButton* button : mButtons) {
        if (button->GetID() == id) {
            button->Press();
            return true;
        }
    }
    return false;
}

bool VtBaseDialog::HandleKey(uint8_t) {
    return false;
}

void VtBaseDialog::DrawContent(PLDrawContext&, const PLRect&) {}

void VtBaseDialog::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const PLRGBColor shadow{110, 114, 122};
    context.FillRect({mBox.top + 4, mBox.right, mBox.bottom + 4, mBox.right + 4}, shadow);
    context.FillRect({mBox.bottom, mBox.left + 4, mBox.bottom + 4, mBox.right + 4}, shadow);
    context.FillRect(mBox, theme.FieldColor());
    if (!mTitle.IsEmpty()) {
        const PLRect band{mBox.top, mBox.left, mBox.top + kTitleHeight, mBox.right};
        theme.DrawBand(context, band);
        theme.DrawText(context, mTitle.view(), band, VtTheme::kWhite, kPLJustifyCenter, nullptr, 6);
    } else {
        // A thin band keeps untitled dialogs in the family of the titled ones.
        theme.DrawBand(context, {mBox.top, mBox.left, mBox.top + 4, mBox.right});
    }
    if (!mButtons.empty()) {
        const int top = mBox.bottom - kButtonRowHeight;
        context.FillRect({top, mBox.left, mBox.bottom, mBox.right}, {236, 238, 242});
        context.DrawLine({top, mBox.left}, {top, mBox.right - 1}, {214, 217, 222});
    }
    context.FrameRect(mBox, {60, 64, 72});
    DrawContent(context, ContentArea());
    if (mButtons.size() > 1 && mFocus < mButtons.size()) {
        theme.DrawFocusFrame(context, mButtons[mFocus]->GetFrame().Insetted(-2, -2));
    }
}
