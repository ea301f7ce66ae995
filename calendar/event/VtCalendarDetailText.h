// The lines of the detail view: one caption and one value per field of the event, in the order
// they are shown. Kept apart from the view so that every value can be checked without a screen.
#pragma once

#include <cstdint>
#include <vector>

#include "APEventRecords.h"
#include "PLBasicString.h"
#include "PLRGBColor.h"

// Pane ids of the values, one per row (captions are the value's id + 20).
constexpr uint32_t kDetailSubjectText = 12120;
constexpr uint32_t kDetailLocationText = 12121;
constexpr uint32_t kDetailStartText = 12122;
constexpr uint32_t kDetailEndText = 12123;
constexpr uint32_t kDetailAllDayText = 12124;
constexpr uint32_t kDetailRepeatText = 12125;
constexpr uint32_t kDetailAlarmText = 12126;
constexpr uint32_t kDetailColourText = 12127;
constexpr uint32_t kDetailClassText = 12128;
constexpr uint32_t kDetailNotesText = 12129;
constexpr uint32_t kDetailCaptionOffset = 20;

struct VtCalendarDetailRow {
    uint32_t paneID;
    uint32_t captionTextID;
    PLBasicString<char> value;
    bool multiLine;  // wraps over as many lines as it needs (dates and times may not fit one)
    bool swatch;     // a colour swatch is drawn before the value
    // The value is a date and a time joined by two spaces: when both do not fit one line, the
    // time goes to the next line whole instead of being split.
    bool dateAndTime;
    PLRGBColor colour;
};

// The settings' display formats: date as PLDate2PLString takes it, time as PLTime::GetStr does.
struct VtCalendarDetailFormats {
    long date = 0;
    long time = 2;
    // The current system settings; a failed read keeps the defaults above.
    static VtCalendarDetailFormats FromSettings();
};

class VtCalendarDetailText {
public:
    // `alert` is the event's alert record, or null when it has none or it cannot be read.
    VtCalendarDetailText(const _EventRecInfo& record, const _EventAlertInfo* alert,
                         const VtCalendarDetailFormats& formats);

    const std::vector<VtCalendarDetailRow>& Rows() const { return mRows; }
    // The value of the row with that pane id; empty for an unknown id.
    PLBasicString<char> ValueOf(uint32_t paneID) const;

    // A text field read up to its terminator, and at most its 600 bytes when it has none.
    static PLBasicString<char> FieldText(const char (&field)[kAPEventTextSize]);
    // The subject, or the "(No subject)" text for an empty one.
    static PLBasicString<char> SubjectText(const _EventRecInfo& record);
    // A moment: date and time joined by two spaces, or the date alone for an all-day event (whose
    // stamps hold the date coded as UTC).
    static PLBasicString<char> MomentText(int32_t stamp, bool allDay,
                                          const VtCalendarDetailFormats& formats);
    // The alarm menu entry (11530 none .. 11540) that an alert record stands for.
    static uint32_t AlarmChoice(const _EventAlertInfo* alert);
    // Text ids of the labels of an alarm entry, a stored colour and a stored class; impossible
    // stored values read as the form reads them (colour 11544, class 11561).
    static uint32_t AlarmLabel(uint32_t choice);
    static uint32_t ColourLabel(uint32_t colour);
    static uint32_t ClassLabel(uint32_t classChoice);

private:
    void Add(uint32_t paneID, uint32_t caption, PLBasicString<char> value, bool multiLine = true);

    std::vector<VtCalendarDetailRow> mRows;
};
