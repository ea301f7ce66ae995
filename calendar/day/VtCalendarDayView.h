// The day view as far as it stands: its date header, its menus and its bottom bar, so that the
// application can switch to it and back. The hour rows and their events are still to come.
#pragma once

#include <cstdint>
#include <memory>

#include "PLDate.h"
#include "PLTime.h"
#include "PLView.h"
#include "VtMenu.h"

class PLListener;

constexpr uint32_t kDayViewID = 11300;
constexpr uint32_t kDayViewSwitchButton = 11302;
constexpr uint32_t kDayExitButton = 11303;
constexpr uint32_t kDayDateHeader = 11304;
constexpr uint32_t kDayViewMenu = 11308;

class VtCalendarDayView : public PLView {
public:
    VtCalendarDayView(uint32_t id, PLDate* selectDate, PLTime* selectTime, bool showLunar);
    static VtCalendarDayView* Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                   bool showLunar, PLListener* application);

    // Takes the selected day (`mode` is not looked at).
    void Reload(int mode);
    // Scrolls to the selected hour.
    void Rebuild();

    PLMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }
    PLMenu* GetViewMenu() const { return mViewMenu.get(); }
    const PLDate& GetShownDate() const { return mShownDate; }
    bool GetShowLunar() const { return mShowLunar; }
    // Sets the hour of the shared selected time, when the view has one (the detail view puts the
    // day back on its event's hour this way).
    void SetSelectHour(int hour);

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarDayView"; }

private:
    PLDate* mSelectDate;
    PLTime* mSelectTime;
    bool mShowLunar;
    PLDate mShownDate;
    std::unique_ptr<VtMenu> mOptionsMenu;
    std::unique_ptr<VtMenu> mViewMenu;
};
