// The week view as far as it stands: its date header, its menus and its bottom bar, so that the
// application can switch to it and back. The hour table and the event bars are still to come.
#pragma once

#include <cstdint>
#include <memory>

#include "PLDate.h"
#include "PLView.h"
#include "VtMenu.h"

class PLListener;

constexpr uint32_t kWeekViewID = 11200;
constexpr uint32_t kWeekViewSwitchButton = 11202;
constexpr uint32_t kWeekExitButton = 11203;
constexpr uint32_t kWeekDateHeader = 11204;
constexpr uint32_t kWeekHourTable = 11207;
constexpr uint32_t kWeekViewMenu = 11209;

class VtCalendarWeekView : public PLView {
public:
    VtCalendarWeekView(uint32_t id, PLDate* selectDate);
    static VtCalendarWeekView* Make(uint32_t id, PLDate* selectDate, PLListener* application);

    // Takes the week of the selected date (`mode` is not looked at).
    void Reload(int mode);
    // Scrolls the hour table to the start of the day.
    void Rebuild();
    // The pane that takes the keys while the week view is shown.
    PLPane* GetHourTable() { return this; }

    PLMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }
    PLMenu* GetViewMenu() const { return mViewMenu.get(); }
    const PLDate& GetShownDate() const { return mShownDate; }

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarWeekView"; }

private:
    PLDate* mSelectDate;
    PLDate mShownDate;
    std::unique_ptr<VtMenu> mOptionsMenu;
    std::unique_ptr<VtMenu> mViewMenu;
};
