// Button factories: sizes, initial states and appearances of the library's buttons.
#include "VtButtonFactory.h"

#include <algorithm>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLFont.h"
#include "VtTheme.h"

namespace {

PLSize FamilySize(const PLBitmapFamily* family) {
    const PLBitmap* bitmap = family != nullptr ? family->GetBitmap(kPLBitmapNormal) : nullptr;
    if (bitmap == nullptr) {
        return {0, 0};
    }
    return {bitmap->GetHeight(), bitmap->GetWidth()};
}

template <class Button>
Button* Finish(Button* button, bool initiallyOn, bool initiallyDisabled,
               const VtAppearance* appearance) {
    button->SetAppearance(appearance);
    if (initiallyOn && button->IsToggle()) {
        button->SetOnState(1, false);
    }
    if (initiallyDisabled) {
        button->SetEnabled(false, false);
    }
    return button;
}

}  // namespace

VtButton* MakeBmpViewButton(uint32_t id, PLPoint location, PLBitmapFamily* family,
                            const PLBasicString<char>& text, long behaviour, bool initiallyOn,
                            bool initiallyDisabled, const VtAppearance* appearance) {
    PLSize size = FamilySize(family);
    if (size.v <= 0 || size.h <= 0) {
        // Without pictures the button is as wide as its text needs.
        const int textWidth = VtTheme::Current().FontFor(appearance)->MeasureText(text.view());
        size = {24, std::clamp(textWidth + 16, 24, kPLScreenWidth)};
    }
    auto* button =
        new VtButton(id, location, size, VtButtonStyle::BmpView, family, text, behaviour);
    return Finish(button, initiallyOn, initiallyDisabled, appearance);
}

VtButton* MakeBmpBarButton(uint32_t id, PLPoint location, PLSize size, PLBitmapFamily* family,
                           const PLBasicString<char>& text, long behaviour, bool initiallyOn,
                           bool initiallyDisabled, const VtAppearance* appearance) {
    auto* button = new VtButton(id, location, size, VtButtonStyle::Bar, family, text, behaviour);
    return Finish(button, initiallyOn, initiallyDisabled, appearance);
}

VtPopupButton* MakeTextPopupButton(uint32_t id, PLPoint location, PLSize size, long behaviour,
                                   const PLBasicString<char>& text, PLMenu* menu, long direction,
                                   bool labelFollowsSelection, bool initiallyDisabled,
                                   bool markSelected, const VtAppearance* appearance) {
    static_cast<void>(behaviour);  // a popup button always acts on release
    auto* button = new VtPopupButton(id, location, size, VtButtonStyle::Bar, text, menu, direction);
    button->SetLabelFollowsSelection(labelFollowsSelection);
    button->SetMarkSelected(markSelected);
    return Finish(button, false, initiallyDisabled, appearance);
}

VtPopupButton* MakeCSTMenuPopupButton(uint32_t id, PLPoint location, PLMenu* menu, long direction,
                                      bool labelFollowsSelection, bool initiallyDisabled,
                                      bool markSelected, const VtAppearance* appearance) {
    auto* button = new VtPopupButton(id, location, kVtBottomButtonSize, VtButtonStyle::Options,
                                     kEmptyString, menu, direction);
    button->SetLabelFollowsSelection(labelFollowsSelection);
    button->SetMarkSelected(markSelected);
    return Finish(button, false, initiallyDisabled, appearance);
}

VtButton* MakeCSTExitButton(uint32_t id, PLPoint location) {
    return new VtButton(id, location, kVtBottomButtonSize, VtButtonStyle::Exit, nullptr,
                        kEmptyString, kVtButtonPush);
}

VtButton* MakeCSTBackButton(uint32_t id, PLPoint location) {
    return new VtButton(id, location, kVtBottomButtonSize, VtButtonStyle::Back, nullptr,
                        kEmptyString, kVtButtonPush);
}

VtButton* MakeVtGeneralButton(uint32_t id, PLPoint location, long width,
                              const PLBasicString<char>& text, const VtAppearance* appearance) {
    const int w = static_cast<int>(std::clamp<long>(width, 1, kPLScreenWidth));
    auto* button = new VtButton(id, location, PLSize(30, w), VtButtonStyle::General, nullptr, text,
                                kVtButtonPush);
    return Finish(button, false, false, appearance);
}
