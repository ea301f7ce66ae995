// The main views' menus and bottom bar.
#include "app/VtCalendarMainViewBar.h"

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLMenuItem.h"
#include "PLView.h"
#include "VtWidgets.h"

namespace {

constexpr uint32_t kOptionsButtonID = 11810;
constexpr uint32_t kBarFamilyA = 30391;
constexpr uint32_t kBarFamilyB = 30401;

}  // namespace

VtMenu* VtCalendarMakeMenu(uint32_t menuId, const uint32_t (*items)[2], int count) {
    VtMenu* menu = MakeVtMenu(kEmptyString, menuId, 6, nullptr);
    for (int i = 0; i < count; ++i) {
        menu->AddMenuItem(new PLMenuItem(APGetStr(items[i][0]), items[i][1]));
    }
    return menu;
}

void VtCalendarAddBottomBar(PLView* view, const VtCalendarBarIds& ids, PLMenu* optionsMenu,
                            PLMenu* viewMenu, PLListener* application) {
    PLAppContext* context = PLAppContext::GetInstance();
    context->GetResource(kPLResBitmapFamily, kBarFamilyA, kPLWildcard);
    context->GetResource(kPLResBitmapFamily, kBarFamilyB, kPLWildcard);

    VtPopupButton* options = MakeCSTMenuPopupButton(kOptionsButtonID, PLPoint(239, 0), optionsMenu,
                                                    1, false, false, true, nullptr);
    options->AddListener(application);
    options->AddListener(view);
    view->AddSubPane(options, false);

    VtPopupButton* viewSwitch = MakeTextPopupButton(
        ids.viewSwitchButton, PLPoint(239, 43), PLSize(36, 154), 1, APGetStr(ids.viewSwitchLabel),
        viewMenu, 1, false, false, true, nullptr);
    viewSwitch->AddListener(application);
    view->AddSubPane(viewSwitch, false);

    VtButton* exit = MakeCSTExitButton(ids.exitButton, PLPoint(239, 197));
    exit->AddListener(application);
    view->AddSubPane(exit, false);
}
