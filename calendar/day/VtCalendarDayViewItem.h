// One row of the day view: an hour row (with its hour label), an extra row for a further event of
// the same hour, or a header row for an all-day or multi-day event above the scrolling list. It
// paints its event, takes part in the day view's selection and, when released, opens the event's
// detail view (through the day view, which keeps one for all its rows) or asks for a new event at
// its hour.
#pragma once

#include <cstdint>
#include <memory>

#include "APEventQueryNodes.h"
#include "PLBasicString.h"
#include "PLView.h"

class PLBitmap;
class PLBitmapFamily;
class VtButton;
class VtCalendarDayView;

// Row geometry and ids shared with the day view.
constexpr int kDayRowHeight = 30;
constexpr int kDayRowWidth = 220;
constexpr int kDayHeaderRowWidth = 240;
constexpr uint32_t kDayHourRowFirstID = 111335;  // + hour
constexpr uint32_t kDayExtraRowID = 111358;      // every extra row (the 23:00 row's id too)
constexpr uint32_t kDayHeaderRowFirstID = 111393;
constexpr uint32_t kDayHourLabelFirstCommand = 11310;  // + hour
constexpr uint32_t kDayExtraRowFirstCommand = 11334;   // + hour
// Left edge of the event column in hour and extra rows; header rows start at 5.
constexpr int kDayEventColumn = 42;

class VtCalendarDayViewItem : public PLView {
public:
    // `node` (may be null) is copied; `owner` may be null for a row shown on its own. The hour
    // label is made for hour rows: not for headers, nor for continuation rows with an event.
    VtCalendarDayViewItem(const APDayEventNode* node, int hour, uint32_t commandID,
                          VtCalendarDayView* owner, bool continuation, bool header,
                          uint32_t viewID);
    ~VtCalendarDayViewItem() override;

    // Redraws only when the state changes.
    void SetSelected(bool selected);
    bool IsSelected() const { return mSelected; }

    // Gives the row its own copy of `node`, or drops its event with null.
    void SetEvent(const APDayEventNode* node);
    const APDayEventNode* GetEvent() const { return mEvent.get(); }
    int GetHour() const { return mHour; }
    void SetHour(int hour) { mHour = hour; }
    bool IsHeader() const { return mIsHeader; }
    const VtButton* GetHourLabel() const { return mHourLabel; }

    // "9am", "12pm", ... or "9:00", "13:00" when `timeFormat` is the 24-hour form (2).
    static PLBasicString<char> HourLabelText(int hour, long timeFormat);
    // The subject as it is drawn: the node's text within its field, or text 10942 when empty.
    static PLBasicString<char> SubjectText(const APDayEventNode& node);

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCalendarDayViewItem"; }
    std::string DumpExtra() const override;

private:
    void MakeHourLabel(uint32_t commandID);
    void DrawBackground(PLDrawContext& context) const;
    void DrawEvent(PLDrawContext& context) const;
    // Makes this row the owner's highlighted one.
    void TakeSelection();

    VtCalendarDayView* mOwner;
    std::unique_ptr<APDayEventNode> mEvent;
    int mHour;
    VtButton* mHourLabel = nullptr;  // a sub-pane
    PLBitmapFamily* mLabelBitmap = nullptr;
    const PLBitmap* mIconBitmapA = nullptr;
    const PLBitmap* mIconBitmapB = nullptr;
    bool mSelected = false;
    bool mIsHeader;
    long mTimeFormat;
};
