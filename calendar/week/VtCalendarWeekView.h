// The week view: the seven days of the week that holds the selected date. A header of weekday
// names and day numbers (tapping either opens that day), a strip of up to three bars for all-day
// and multi-day events, and below them the scrolled hour table with the timed events. The options
// menu offers go to a date and deleting the week's events; other screens are asked of the
// application by message.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "APEventQueryNodes.h"
#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDate.h"
#include "PLView.h"
#include "VtMenu.h"
#include "week/VtCalendarWeekModel.h"

class PLListener;
class VtButton;
class VtScrollContainer;
class VtCalendarWeekViewHourTable;

constexpr uint32_t kWeekViewID = 11200;
constexpr uint32_t kWeekViewSwitchButton = 11202;
constexpr uint32_t kWeekExitButton = 11203;
constexpr uint32_t kWeekDateHeader = 11204;
constexpr uint32_t kWeekScrollContainer = 11205;
constexpr uint32_t kWeekHourTable = 11207;
constexpr uint32_t kWeekViewMenu = 11209;
constexpr uint32_t kWeekDeleteYes = 11210;
constexpr uint32_t kWeekDeleteNo = 11211;
constexpr uint32_t kWeekNameButton = 11220;  // + column 0..6
constexpr uint32_t kWeekDayButton = 11230;   // + column 0..6

class VtCalendarWeekView : public PLView {
public:
    VtCalendarWeekView(uint32_t id, PLDate* selectDate);
    ~VtCalendarWeekView() override;
    VtCalendarWeekView(const VtCalendarWeekView&) = delete;
    VtCalendarWeekView& operator=(const VtCalendarWeekView&) = delete;

    // The view with its bottom bar and date header; `application` hears the buttons that ask for
    // other screens and the hour table.
    static VtCalendarWeekView* Make(uint32_t id, PLDate* selectDate, PLListener* application);

    // Shows the week of the selected date afresh from the settings and the store (`mode` is not
    // looked at: data and settings changes are handled alike).
    void Reload(int mode);
    // Scrolls the hour table to the start-of-day hour.
    void Rebuild();
    // The pane that takes the keys while the week view is shown.
    PLPane* GetHourTable() const;
    VtCalendarWeekViewHourTable* GetTable() const { return mHourTable; }

    PLMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }
    PLMenu* GetViewMenu() const { return mViewMenu.get(); }
    const PLDate& GetShownDate() const { return mShownDate; }
    const PLDate& GetWeekStart() const { return mWeekStart; }
    const VtCalendarWeekModel& GetModel() const { return mModel; }
    bool HasEvents() const { return mWeekEvents != nullptr; }

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarWeekView"; }

private:
    // --- construction
    void MakeBitmapFamilies();
    void MakeHeaderButtons();
    void MakeHourTable();
    void BuildMenus();

    // --- refresh
    void Refresh();
    void ScrollToStartOfDay();
    void UpdateDayButtons();
    void UpdateNameButtons();
    void LoadWeek();

    // --- painting
    void DrawMargins(PLDrawContext& context) const;
    void DrawStrip(PLDrawContext& context) const;

    // --- commands
    void OpenDay(const PLDate& date);
    void GoToDate();
    void DeleteAllOfWeek();
    // Deletes every event of a fresh week list once the user agreed; false when cancelled.
    bool DeleteWeekEvents();
    void TakeKeys();

    PLDate* mSelectDate;
    PLDate mShownDate;
    PLDate mWeekStart;
    uint16_t mStartWeekday = 1;
    VtCalendarWeekViewHourTable* mHourTable = nullptr;  // owned by the scroll container
    VtScrollContainer* mScrollContainer = nullptr;      // sub-pane
    // The resource strips, and the families of their widened copies (which own the copies).
    const PLBitmap* mColumnBitmapA = nullptr;
    const PLBitmap* mColumnBitmapB = nullptr;
    const PLBitmap* mNameBitmapA = nullptr;
    const PLBitmap* mNameBitmapB = nullptr;
    std::unique_ptr<PLBitmapFamily> mDayFamily;
    std::unique_ptr<PLBitmapFamily> mNameFamily;
    std::array<VtButton*, kWeekDays> mDayButtons{};   // sub-panes
    std::array<VtButton*, kWeekDays> mNameButtons{};  // sub-panes
    std::array<PLDate, kWeekDays> mDayDates{};
    VtCalendarWeekModel mModel;
    std::unique_ptr<VtMenu> mViewMenu;
    std::unique_ptr<VtMenu> mOptionsMenu;
    APMonthEventNode* mWeekEvents = nullptr;
};
