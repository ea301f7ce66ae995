// The day view: the selected day's events in 24 hour rows (further events of an hour in extra
// rows below it), up to three header rows for all-day and multi-day events, an optional lunar
// row, a selection moved by keys and taps, the options and view-switch menus, and the delete
// dialog. Opening another screen is asked of the application by message, except the event's
// detail view, its edit form and the delete dialog, which this view shows over itself.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "APEventQueryNodes.h"
#include "APEventRecords.h"
#include "PLDate.h"
#include "PLTime.h"
#include "PLView.h"
#include "VtMenu.h"

class PLBitmap;
class PLListener;
class VtCalendarDayViewDeleteDialog;
class VtCalendarDayViewItem;
class VtCalendarDetailView;
class VtCalendarNewEventView;
class VtScrollContainer;

constexpr uint32_t kDayViewID = 11300;
constexpr uint32_t kDayViewSwitchButton = 11302;
constexpr uint32_t kDayExitButton = 11303;
constexpr uint32_t kDayDateHeader = 11304;
constexpr uint32_t kDayScrollContainer = 11305;
constexpr uint32_t kDayViewMenu = 11308;
constexpr uint32_t kDayOptionDeleteEvents = 11817;
constexpr uint32_t kDayEditViewID = 11570;
constexpr uint32_t kDayEditDone = 11572;
constexpr uint32_t kDayDeleteDialogID = 12200;

// Layout of the list under the date header (29 high) and the lunar row (30 high).
constexpr int kDayListTop = 29;
constexpr int kDayLunarRowHeight = 30;
constexpr int kDayListHeight = 210;
constexpr int kDayMaxHeaderRows = 3;
constexpr int kDayHours = 24;

class VtCalendarDayView : public PLView {
public:
    VtCalendarDayView(uint32_t id, PLDate* selectDate, PLTime* selectTime, bool showLunar);
    ~VtCalendarDayView() override;
    // The view with its bottom bar and date header; `application` hears the buttons that ask for
    // other screens.
    static VtCalendarDayView* Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                   bool showLunar, PLListener* application);

    // Takes the selected date, rebuilds every row from the store and repaints (`mode` is not
    // looked at).
    void Reload(int mode);
    // Scrolls the list to the selected hour.
    void Rebuild();
    // Sets the hour of the shared selected time, when the view has one (the detail view puts the
    // day back on its event's hour this way).
    void SetSelectHour(int hour);

    // --- used by the rows
    // Selects the row with `id` and takes `hour`; the wildcard id asks for a new event there.
    void SelectByTap(uint32_t id, int hour);
    void ClearSelection();
    // Shows the details of event `id` over this view, in the one detail view it keeps for its
    // rows (made on the first tap, reused afterwards).
    void ShowDetailView(int32_t id);
    VtCalendarDetailView* GetDetailView() const { return mDetailView; }
    VtCalendarDayViewItem* GetSelectedItem() const { return mSelectedItem; }
    void SetSelectedItem(VtCalendarDayViewItem* item) { mSelectedItem = item; }
    long GetTimeFormat() const { return mTimeFormat; }

    // --- state, for the application and tests
    PLMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }
    PLMenu* GetViewMenu() const { return mViewMenu.get(); }
    const PLDate& GetShownDate() const { return mShownDate; }
    bool GetShowLunar() const { return mShowLunar; }
    const std::vector<VtCalendarDayViewItem*>& GetItems() const { return mItems; }
    int GetContentHeight() const { return mContentHeight; }
    const APDayEventNode* GetDayEvents() const { return mDayEvents; }
    VtScrollContainer* GetScrollContainer() const { return mScrollContainer; }
    long GetScrollOffset() const;
    VtCalendarDayViewDeleteDialog* GetDeleteDialog() const { return mDeleteDialog; }

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarDayView"; }

private:
    // --- loading and rows
    void LoadDay();
    void FreeDayEvents();
    void RebuildRows();
    void RemoveRows();
    void BuildRows();
    int AddHeaderRows();
    void AddHourRows();
    void PlaceTimedEvents();
    void InsertExtraRow(const APDayEventNode& node);
    void LayoutContainer(int headerRows);
    VtCalendarDayViewItem* HourRow(int hour);

    // --- scrolling and selection
    void ScrollTo(int offset);
    void SelectPrevious();
    void SelectNext();
    void Highlight(VtCalendarDayViewItem* item);

    // --- messages
    void OnHeader(uint32_t value);
    void OnControl(uint32_t sender, uint32_t value);
    void OnOptions();
    void OpenEditForm(int32_t eventID);
    void OpenDeleteDialog();
    void GoToDate();
    void TakeKeys();
    void AfterChange();

    VtScrollContainer* mScrollContainer = nullptr;  // a sub-pane once the rows are built
    std::vector<VtCalendarDayViewItem*> mItems;     // sub-panes of the container
    VtCalendarDayViewItem* mSelectedItem = nullptr;
    APDayEventNode* mDayEvents = nullptr;
    bool mShowLunar;
    PLDate* mSelectDate;
    PLDate mShownDate;
    const PLBitmap* mLunarStripBitmap = nullptr;
    const PLBitmap* mIconBitmapA = nullptr;
    const PLBitmap* mIconBitmapB = nullptr;
    std::unique_ptr<VtMenu> mOptionsMenu;
    std::unique_ptr<VtMenu> mViewMenu;
    // Made on first use and kept; owned here while not on the screen.
    VtCalendarDayViewDeleteDialog* mDeleteDialog = nullptr;
    VtCalendarNewEventView* mEditView = nullptr;
    // Null again once it deleted its event: it then closes and destroys itself.
    VtCalendarDetailView* mDetailView = nullptr;
    PLTime* mSelectTime;
    std::unique_ptr<_EventRecInfo> mEventRec;
    int mContentHeight = 720;  // 24 rows of 30, plus 30 per extra row
    long mTimeFormat = 1;
};
