// Menu and choice-control factories.
#include "VtMenuFactory.h"

namespace {

VtMenu* WithAppearance(VtMenu* menu, const VtAppearance* appearance) {
    if (appearance != nullptr && appearance->font != nullptr) {
        menu->SetFont(appearance->font);
    }
    return menu;
}

}  // namespace

VtMenu* MakeVtMenu(const PLBasicString<char>& title, uint32_t id, long visibleRows,
                   const VtAppearance* appearance) {
    return WithAppearance(new VtMenu(title, id, visibleRows), appearance);
}

VtMenu* MakeVtComboMenu(const PLBasicString<char>& title, uint32_t id,
                        const VtAppearance* appearance) {
    return WithAppearance(new VtMenu(title, id, 6), appearance);
}

VtMenu* MakeVtComboColorMenu(const PLBasicString<char>& title, uint32_t id,
                             const VtAppearance* appearance) {
    return WithAppearance(new VtMenu(title, id, 6), appearance);
}

VtComboControl* MakeVtComboControl(uint32_t id, PLPoint location, PLSize size, PLMenu* menu,
                                   long captionWidth, const PLBasicString<char>& caption) {
    return new VtComboControl(id, location, size, menu, captionWidth, caption);
}
