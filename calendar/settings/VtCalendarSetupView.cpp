// The settings view: controls, loading, the day-start picker and saving.
#include "settings/VtCalendarSetupView.h"

#include <cassert>

#include "APGetStr.h"
#include "PLDrawContext.h"
#include "PLMenuItem.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"
#include "settings/VtCalendarSetupMapping.h"

namespace {

constexpr int kRowHeight = 30;
constexpr int kCaptionWidth = 116;
constexpr int kLeft = 6;
constexpr int kBoxLeft = kLeft + kCaptionWidth;
constexpr int kBoxWidth = 240 - kBoxLeft - kLeft;
constexpr long kDayStartPickerMode = 2;

VtMenu* ComboMenu(uint32_t id, const uint32_t (*items)[2], int count) {
    VtMenu* menu = MakeVtComboMenu(kEmptyString, id, nullptr);
    for (int i = 0; i < count; ++i) {
        menu->AddMenuItem(new PLMenuItem(APGetStr(items[i][1]), items[i][0]));
    }
    return menu;
}

void SelectByIndex(PLMenu* menu, VtComboControl* combo, size_t index) {
    // An index of 0 (a stored value with no entry) selects nothing and keeps what was shown.
    if (menu->SetSelectedItemByIndex(index)) {
        combo->SyncFromMenu(false);
    }
}

}  // namespace

VtCalendarSetupView::VtCalendarSetupView(uint32_t id)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)) {
    const uint32_t views[][2] = {{11414, 10032}, {11415, 10042}, {11416, 10052}};
    mDefaultViewMenu.reset(ComboMenu(11412, views, 3));
    // Monday first and Sunday last: the order users of this menu know.
    const uint32_t weekdays[][2] = {{11425, 30392}, {11426, 30402}, {11427, 30412}, {11428, 30422},
                                    {11429, 30432}, {11430, 30442}, {11424, 30452}};
    mFirstWeekdayMenu.reset(ComboMenu(11422, weekdays, 7));
    const uint32_t keep[][2] = {{11452, 10712}, {11453, 10722}, {11454, 10732},
                                {11455, 10742}, {11456, 10752}, {11457, 10762}};
    mKeepTimeMenu.reset(ComboMenu(11459, keep, 6));
}

VtCalendarSetupView::~VtCalendarSetupView() {
    // The combos refer to the menus: take them down before the menus go.
    while (!GetSubPanes().empty()) {
        PLPane* pane = GetSubPanes().back();
        RemoveSubPane(pane);
        delete pane;
    }
}

VtCalendarSetupView* VtCalendarSetupView::Make(uint32_t id, PLListener* application) {
    auto* view = new VtCalendarSetupView(id);
    view->BuildControls(application);
    return view;
}

VtComboControl* VtCalendarSetupView::AddChoice(uint32_t captionId, uint32_t captionText,
                                               uint32_t comboId, VtMenu* menu, int top) {
    AddSubPane(MakeStaticText(captionId, PLPoint(top, kLeft), PLSize(kRowHeight, kCaptionWidth),
                              APGetStr(captionText), 1, false, 0, PLRGBColor(-1, false), nullptr),
               false);
    VtComboControl* combo = MakeVtComboControl(
        comboId, PLPoint(top, kBoxLeft), PLSize(kRowHeight, kBoxWidth), menu, 0, kEmptyString);
    combo->AddListener(this);
    AddSubPane(combo, false);
    return combo;
}

void VtCalendarSetupView::BuildControls(PLListener* application) {
    SetHasBmpBackground(true, true);
    mDefaultView = AddChoice(11413, 10662, 11411, mDefaultViewMenu.get(), 12);
    mFirstWeekday = AddChoice(11423, 10672, 11421, mFirstWeekdayMenu.get(), 52);

    mDayStartField = MakeVtEditField(kSetupDayStartField, PLPoint(92, kLeft),
                                     PLSize(kRowHeight, 240 - 2 * kLeft), kEmptyString, true, -1, 1,
                                     1, 0, APGetStr(10682), 1, kCaptionWidth, nullptr, false,
                                     kVtEditFieldRect, -1, true);
    mDayStartField->AddListener(this);
    AddSubPane(mDayStartField, false);

    mKeepTime = AddChoice(11451, 10692, 11458, mKeepTimeMenu.get(), 132);

    mLunar = MakeCheckbox(11461, PLPoint(172, kLeft), PLSize(kRowHeight, 240 - 2 * kLeft),
                          APGetStr(10702), false, nullptr, nullptr);
    AddSubPane(mLunar, false);

    // The settings are a secondary screen with no options of their own: the options place of the
    // bottom bar is kept (the bar looks the same on every screen) but the button carries no menu
    // and is disabled, as on the other secondary screens. A main view's options menu would offer
    // "new event" and "settings" here, which the application only serves from a main view.
    VtPopupButton* options =
        MakeCSTMenuPopupButton(11810, PLPoint(239, 0), nullptr, 1, false, false, true, nullptr);
    options->SetEnabled(false, false);
    AddSubPane(options, false);
    VtButton* save = MakeBmpBarButton(kSetupSave, PLPoint(239, 43), PLSize(36, 154), nullptr,
                                      APGetStr(30092), 1, false, false, nullptr);
    // The view writes the settings before the application takes it off the screen.
    save->AddListener(this);
    save->AddListener(application);
    AddSubPane(save, false);
    VtButton* back = MakeCSTBackButton(kSetupBack, PLPoint(239, 197));
    back->AddListener(application);
    AddSubPane(back, false);
}

void VtCalendarSetupView::LoadSettings() {
    APCONFIG_CALENDAR_S read;
    if ((APConfigCalendar_Read(&read) & 0xFF) == 0) {
        return;
    }
    mLoaded = read;
    APConfigSystem_GetTimeFormat(&mTimeFormat);
    SelectByIndex(mDefaultViewMenu.get(), mDefaultView, DefaultViewMenuIndex(read.defaultView));
    SelectByIndex(mFirstWeekdayMenu.get(), mFirstWeekday, FirstWeekdayMenuIndex(read.startWeekDay));
    SelectByIndex(mKeepTimeMenu.get(), mKeepTime, KeepTimeMenuIndex(read.keepTime));
    mDayStart = PLTime(read.startDayTime, 0, 0);
    ShowDayStart(false);
    // Ticked for any non-zero value; the box keeps the value itself, so that a value other than
    // 0 or 1 is saved as the default unless the user ticks the box again.
    mLunar->SetOnState(read.lunarCalendar, false);
}

void VtCalendarSetupView::ShowDayStart(bool redraw) {
    PLBasicString<char> text;
    PLTime::GetStr(mDayStart, mTimeFormat, text);
    mDayStartField->SetString(text, redraw);
}

void VtCalendarSetupView::ChooseDayStart() {
    ShowTimePicker(mDayStart, mTimeFormat, kDayStartPickerMode);
    ShowDayStart(true);
}

APCONFIG_CALENDAR_S VtCalendarSetupView::ControlsRecord() const {
    APCONFIG_CALENDAR_S chosen = mLoaded;
    chosen.defaultView = int32_t(mDefaultView->GetValue());
    chosen.startWeekDay = int32_t(mFirstWeekday->GetValue());
    chosen.startDayTime = mDayStart.GetHour();
    chosen.keepTime = int32_t(mKeepTime->GetValue());
    chosen.lunarCalendar = int32_t(mLunar->GetOnState());
    return ValidatedSettings(chosen);
}

bool VtCalendarSetupView::SaveSettings() {
    APCONFIG_CALENDAR_S record = ControlsRecord();
    const bool written = (APConfigCalendar_Write(&record) & 0xFF) != 0;
    const uint32_t flags = SettingsChangeFlags(mLoaded, record);
    PLMessage changed(kPLMsgValue, GetID(), flags, kEmptyString, kEmptyString);
    BroadcastMessage(&changed);
    return written;
}

void VtCalendarSetupView::Listen(PLMessage* message) {
    assert(message != nullptr && "a message to handle");
    if (message == nullptr) {
        return;
    }
    if (message->GetMessageID() == kPLMsgEditPressed &&
        message->GetSenderID() == kSetupDayStartField) {
        ChooseDayStart();
    } else if (message->GetMessageID() == kPLMsgControl && message->GetSenderID() == kSetupSave) {
        SaveSettings();
    }
}

void VtCalendarSetupView::Draw(PLDrawContext& context) {
    PLThemeManager::GetCurrentTheme()->DrawBmpBackground(context, *this);
}
