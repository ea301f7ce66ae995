// The settings view: the view shown first, the first day of the week, the hour at which the day
// view starts, how long finished events are kept and whether lunar dates are shown. It loads the
// settings each time it is opened, writes them on save and tells the application which views
// must reload.
#pragma once

#include <cstdint>
#include <memory>

#include "APConfig.h"
#include "PLTime.h"
#include "PLView.h"
#include "VtMenu.h"

class PLListener;
class VtCheckbox;
class VtComboControl;
class VtEditField;

constexpr uint32_t kSetupViewID = 11400;
constexpr uint32_t kSetupSave = 11401;
constexpr uint32_t kSetupBack = 11402;
constexpr uint32_t kSetupDayStartField = 11441;

class VtCalendarSetupView : public PLView {
public:
    explicit VtCalendarSetupView(uint32_t id);
    ~VtCalendarSetupView() override;
    // The view with its controls; `application` also hears the save and back buttons.
    static VtCalendarSetupView* Make(uint32_t id, PLListener* application);

    // Shows the stored settings; a failed read leaves the controls as they were.
    void LoadSettings();
    // Writes the controls' settings (invalid ones replaced by the defaults), broadcasts the
    // change flags and returns whether the write succeeded.
    bool SaveSettings();

    const APCONFIG_CALENDAR_S& GetLoaded() const { return mLoaded; }
    const PLTime& GetDayStart() const { return mDayStart; }
    VtComboControl* GetDefaultViewCombo() const { return mDefaultView; }
    VtComboControl* GetFirstWeekdayCombo() const { return mFirstWeekday; }
    VtComboControl* GetKeepTimeCombo() const { return mKeepTime; }
    VtCheckbox* GetLunarBox() const { return mLunar; }

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarSetupView"; }

private:
    void BuildControls(PLListener* application);
    VtComboControl* AddChoice(uint32_t captionId, uint32_t captionText, uint32_t comboId,
                              VtMenu* menu, int top);
    void ShowDayStart(bool redraw);
    void ChooseDayStart();
    APCONFIG_CALENDAR_S ControlsRecord() const;

    APCONFIG_CALENDAR_S mLoaded;
    PLTime mDayStart{8, 0, 0};
    long mTimeFormat = 2;
    std::unique_ptr<VtMenu> mDefaultViewMenu;
    std::unique_ptr<VtMenu> mFirstWeekdayMenu;
    std::unique_ptr<VtMenu> mKeepTimeMenu;
    // Sub-panes, owned as such.
    VtComboControl* mDefaultView = nullptr;
    VtComboControl* mFirstWeekday = nullptr;
    VtComboControl* mKeepTime = nullptr;
    VtEditField* mDayStartField = nullptr;
    VtCheckbox* mLunar = nullptr;
};
