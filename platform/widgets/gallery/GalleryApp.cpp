// The gallery application: screens, bottom bar, log line and switching between screens.
#include "GalleryApp.h"

#include "GalleryPages.h"
#include "GalleryScreen.h"
#include "IMEManager.h"
#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLView.h"
#include "VtWidgets.h"

namespace {
constexpr int kBarTop = kPLScreenHeight - 36;
constexpr int kLogHeight = 24;
}  // namespace

GalleryApp::GalleryApp() = default;

GalleryApp::~GalleryApp() = default;

PLMenu* GalleryApp::Keep(PLMenu* menu) {
    mMenus.emplace_back(menu);
    return menu;
}

IMEManager* GalleryApp::Keep(IMEManager* manager) {
    mIMEs.emplace_back(manager);
    return manager;
}

GalleryScreen* GalleryApp::AddScreen(uint32_t id, const char* title,
                                     void (*build)(GalleryScreen&)) {
    auto* screen = new GalleryScreen(id, *this);
    screen->Add(
        MakeVtTextTopBar(id + 99, PLPoint(0, 0), kPLScreenWidth, title, kEmptyString, 0, 0));
    build(*screen);
    screen->Hide(false);
    GetRootView()->AddSubPane(screen, false);
    mScreens.push_back(screen);
    mScreenMenu->AddMenuItem(new PLMenuItem(title, id));
    return screen;
}

void GalleryApp::Initialize() {
    PLApplication::Initialize();
    InitVantorTheme(PLRGBColor(), 0, true, true, true, false);
    mScreenMenu =
        static_cast<VtMenu*>(Keep(MakeVtMenu(kEmptyString, kGalleryScreenMenu, 6, nullptr)));
    AddScreen(100, "Buttons", BuildButtonsPage);
    AddScreen(200, "Menus and choices", BuildMenusPage);
    AddScreen(300, "Fields and toggles", BuildFieldsPage);
    AddScreen(400, "Labels", BuildLabelsPage);
    AddScreen(500, "Check list", BuildCheckListPage);
    AddScreen(600, "Radio list", BuildRadioListPage);
    AddScreen(1000, "Repeat editor (monthly)", BuildRepeatEditorPage);
    AddScreen(1100, "Week cells and day rows", BuildWeekDayRowsPage);
    AddScreen(700, "Scrolling", BuildScrollPage);
    AddScreen(800, "Dialogs", BuildDialogsPage);
    AddScreen(900, "Date headers", BuildHeadersPage);
    mLog = MakeStaticText(kGalleryLogID, PLPoint(kBarTop - kLogHeight, 0),
                          PLSize(kLogHeight, kPLScreenWidth), "ready", 1, false, 0,
                          PLRGBColor(90, 94, 102), nullptr);
    mLog->SetHasBmpBackground(true, false);
    GetRootView()->AddSubPane(mLog, false);
    BuildBottomBar();
    ShowScreen(100);
}

void GalleryApp::BuildBottomBar() {
    PLView* root = GetRootView();
    auto* menuButton = MakeCSTMenuPopupButton(kGalleryScreenMenuButton, PLPoint(kBarTop, 0),
                                              mScreenMenu, kVtPopupUp, false, false, true, nullptr);
    auto* next = MakeBmpBarButton(kGalleryNextButton, PLPoint(kBarTop, 43), PLSize(36, 154),
                                  nullptr, "Next screen", kVtButtonPush, false, false, nullptr);
    auto* exit = MakeCSTExitButton(kGalleryExitButton, PLPoint(kBarTop, 197));
    for (PLPane* pane : {static_cast<PLPane*>(menuButton), static_cast<PLPane*>(next),
                         static_cast<PLPane*>(exit)}) {
        pane->AddListener(this);
        root->AddSubPane(pane, false);
    }
}

GalleryScreen* GalleryApp::CurrentScreen() const {
    return mCurrent < mScreens.size() ? mScreens[mCurrent] : nullptr;
}

void GalleryApp::ShowScreen(uint32_t id) {
    for (size_t i = 0; i < mScreens.size(); ++i) {
        if (mScreens[i]->GetID() == id) {
            mScreens[mCurrent]->Hide(true);
            mCurrent = i;
            mScreens[i]->Show(true);
            mScreenMenu->SetSelectedItemByID(id);
            PLAppContext::GetInstance()->GetEventLoop().SetTarget(mScreens[i]->GetKeyTarget());
            return;
        }
    }
}

void GalleryApp::Log(const std::string& line) {
    if (mLog != nullptr) {
        mLog->SetString(PLBasicString<char>(line), true);
    }
}

void GalleryApp::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const uint32_t kind = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (kind == kPLMsgSelect && sender == kGalleryScreenMenuButton) {
        ShowScreen(message->GetUserMessageID());
    } else if (kind == kPLMsgControl && sender == kGalleryNextButton) {
        ShowScreen(mScreens[(mCurrent + 1) % mScreens.size()]->GetID());
    } else if ((kind == kPLMsgControl && sender == kGalleryExitButton) || kind == 5005) {
        PLEventDispatcher::ShutdownEventLoops();
        return;
    } else {
        return;
    }
    Log(GalleryScreen::Describe(*message));
}
