// Day view rows: the node copy, the hour label, painting, and what a press and a release do.
#include "day/VtCalendarDayViewItem.h"

#include <cassert>
#include <cstring>
#include <string>

#include "APConfig.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLMessage.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"
#include "day/VtCalendarDayView.h"

namespace {

constexpr uint32_t kLabelFamilyID = 10091;
constexpr uint32_t kIconAID = 10130;
constexpr uint32_t kIconBID = 10240;
constexpr uint32_t kEmptySubjectText = 10942;
constexpr int kHeaderContentLeft = 5;
constexpr int kIconWidthA = 29;  // icon A plus its gap: the second icon starts 29 further on
constexpr int kTextRight = 220;

constexpr PLRGBColor kRowGrey{228, 228, 228};
constexpr PLRGBColor kWhite{255, 255, 255};
constexpr PLRGBColor kBlack{0, 0, 0};

long ReadTimeFormat(const VtCalendarDayView* owner) {
    if (owner != nullptr) {
        return owner->GetTimeFormat();
    }
    long format = kAPTimeFormat12;
    APConfigSystem_GetTimeFormat(&format);
    return format;
}

}  // namespace

VtCalendarDayViewItem::VtCalendarDayViewItem(const APDayEventNode* node, int hour,
                                             uint32_t commandID, VtCalendarDayView* owner,
                                             bool continuation, bool header, uint32_t viewID)
    : PLView(viewID, PLPoint(0, 0), PLSize(kDayRowHeight, kDayRowWidth)),
      mOwner(owner),
      mHour(hour),
      mIsHeader(header),
      mTimeFormat(ReadTimeFormat(owner)) {
    SetComponentListener(nullptr, true, false);
    SetHasBmpBackground(false, true);
    PLAppContext* context = PLAppContext::GetInstance();
    mLabelBitmap = context->GetBitmapFamily(kLabelFamilyID);
    mIconBitmapA = CalendarBitmap(kIconAID);
    mIconBitmapB = CalendarBitmap(kIconBID);
    SetEvent(node);
    if (!header && (!continuation || node == nullptr)) {
        MakeHourLabel(commandID);
    }
}

VtCalendarDayViewItem::~VtCalendarDayViewItem() = default;

void VtCalendarDayViewItem::SetEvent(const APDayEventNode* node) {
    if (node == nullptr) {
        mEvent.reset();
        return;
    }
    mEvent = std::make_unique<APDayEventNode>();
    std::memcpy(mEvent.get(), node, sizeof(APDayEventNode));
    mEvent->next = nullptr;
    // The store's field may lack its terminator: copy no further than the field and end it.
    const size_t length = strnlen(node->subject, kAPDayNodeSubjectSize - 1);
    std::memcpy(mEvent->subject, node->subject, length);
    mEvent->subject[length] = '\0';
}

PLBasicString<char> VtCalendarDayViewItem::HourLabelText(int hour, long timeFormat) {
    if (timeFormat == kAPTimeFormat24) {
        return PLBasicString<char>(std::to_string(hour) + ":00");
    }
    if (hour == 0) {
        return PLBasicString<char>("12am");
    }
    if (hour < 12) {
        return PLBasicString<char>(std::to_string(hour) + "am");
    }
    if (hour == 12) {
        return PLBasicString<char>("12pm");
    }
    return PLBasicString<char>(std::to_string(hour - 12) + "pm");
}

PLBasicString<char> VtCalendarDayViewItem::SubjectText(const APDayEventNode& node) {
    const size_t length = strnlen(node.subject, kAPDayNodeSubjectSize);
    if (length == 0) {
        return APGetStr(kEmptySubjectText);
    }
    return PLBasicString<char>(std::string_view(node.subject, length));
}

void VtCalendarDayViewItem::MakeHourLabel(uint32_t commandID) {
    mHourLabel =
        MakeBmpViewButton(commandID, PLPoint(3, 0), mLabelBitmap, HourLabelText(mHour, mTimeFormat),
                          kVtButtonPush, false, false, nullptr);
    mHourLabel->SetTextColor(kBlack, false);
    mHourLabel->SetFont(PLFont::GetFont(PLFourCC("UC16")), false);
    mHourLabel->AddListener(this);
    AddSubPane(mHourLabel, false);
}

void VtCalendarDayViewItem::SetSelected(bool selected) {
    if (selected == mSelected) {
        return;
    }
    mSelected = selected;
    Redraw();
}

// ---------------------------------------------------------------------------------- painting

void VtCalendarDayViewItem::Draw(PLDrawContext& context) {
    DrawBackground(context);
    if (mEvent) {
        DrawEvent(context);
    }
}

void VtCalendarDayViewItem::DrawBackground(PLDrawContext& context) const {
    const PLRect bounds = GetBounds();
    if (mIsHeader) {
        context.FillRect(PLRect(0, 0, kDayRowHeight, kDayHeaderRowWidth), kWhite);
        context.DrawLine(PLPoint(29, 0), PLPoint(29, kDayHeaderRowWidth), kRowGrey);
        if (mSelected) {
            PLRect frame = bounds.Insetted(1, 1);
            context.FrameRect(frame, kBlack);
            context.FrameRect(frame.Insetted(1, 1), kBlack);
        }
        return;
    }
    context.FillRect(bounds, kRowGrey);
    context.DrawLine(PLPoint(0, kDayEventColumn), PLPoint(0, bounds.right), kWhite);
    context.DrawLine(PLPoint(0, kDayEventColumn), PLPoint(kDayRowHeight, kDayEventColumn), kWhite);
    if (mSelected) {
        PLRect column = bounds;
        column.left = kDayEventColumn;
        column = column.Insetted(1, 1);
        context.FrameRect(column, kBlack);
        context.FrameRect(column.Insetted(1, 1), kBlack);
    }
}

void VtCalendarDayViewItem::DrawEvent(PLDrawContext& context) const {
    const int x0 = mIsHeader ? kHeaderContentLeft : kDayEventColumn;
    const int height = GetSize().v;
    const int iconTop = (height - 24) / 2;
    int x = x0 + 5;
    if (mEvent->alarmIcon != 0 && mIconBitmapA != nullptr) {
        context.DrawBitmap(*mIconBitmapA, PLPoint(iconTop, x));
        x = x0 + 34;
    }
    if (mEvent->repeatIcon != 0 && mIconBitmapB != nullptr) {
        context.DrawBitmap(*mIconBitmapB, PLPoint(iconTop, x));
        x += kIconWidthA;
    }
    context.SetTextColor(kBlack);
    context.DrawString(SubjectText(*mEvent), PLRect(3, x, height, kTextRight), kNullPoint, -1, true,
                       kPLJustifyLeft);
}

// -------------------------------------------------------------------------------------- pen

void VtCalendarDayViewItem::TakeSelection() {
    if (mOwner == nullptr) {
        SetSelected(true);
        return;
    }
    mOwner->ClearSelection();
    SetSelected(true);
    mOwner->SetSelectedItem(this);
}

void VtCalendarDayViewItem::MouseDown(PLPoint where, PLMouseButton button) {
    PLPane::MouseDown(where, button);
    // A header row keeps the highlight where it is until it is released.
    if (mEvent && mIsHeader) {
        return;
    }
    TakeSelection();
}

void VtCalendarDayViewItem::MouseUp(PLPoint, PLMouseButton) {
    if (mOwner == nullptr) {
        return;
    }
    if (!mEvent) {
        mOwner->SelectByTap(kPLWildcard, mHour);
    } else {
        const uint32_t id = GetID();
        if (id >= kDayHourRowFirstID && id <= kDayExtraRowID) {
            mOwner->SelectByTap(id, mHour);
        }
        mOwner->ShowDetailView(mEvent->id);
    }
    if (mSelected) {
        mOwner->SetSelectedItem(this);
    }
}

void VtCalendarDayViewItem::Listen(PLMessage* message) {
    if (message == nullptr || message->GetMessageID() != kPLMsgControl) {
        return;
    }
    const uint32_t sender = message->GetSenderID();
    if (mOwner != nullptr && sender >= kDayHourLabelFirstCommand &&
        sender < kDayExtraRowFirstCommand) {
        mOwner->SelectByTap(kPLWildcard, mHour);
    }
    if (mEvent && mIsHeader) {
        return;
    }
    TakeSelection();
}

std::string VtCalendarDayViewItem::DumpExtra() const {
    std::string extra =
        "\"hour\":" + std::to_string(mHour) + ",\"selected\":" + (mSelected ? "true" : "false");
    if (mEvent) {
        extra += ",\"event\":" + std::to_string(mEvent->id);
    }
    return extra;
}
