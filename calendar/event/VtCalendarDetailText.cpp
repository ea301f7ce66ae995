// The detail view's lines, from the record, its alert record and the display settings.
#include "event/VtCalendarDetailText.h"

#include <cstring>

#include "APConfig.h"
#include "APGetStr.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "event/VtCalendarColours.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/VtCalendarRecurText.h"

namespace {

constexpr uint32_t kCaptionSubject = 10062;
constexpr uint32_t kCaptionLocation = 10072;
constexpr uint32_t kCaptionAllDay = 10082;
constexpr uint32_t kCaptionStart = 10092;
constexpr uint32_t kCaptionEnd = 10102;
constexpr uint32_t kCaptionNotes = 10112;
constexpr uint32_t kCaptionAlarm = 10122;
constexpr uint32_t kCaptionColour = 10132;
constexpr uint32_t kCaptionClass = 10142;
constexpr uint32_t kCaptionRepeat = 10402;
constexpr uint32_t kTextNoSubject = 10942;
constexpr uint32_t kTextYes = 12192;
constexpr uint32_t kTextNo = 12112;

constexpr uint32_t kAlarmLabelFirst = 10152;
constexpr uint32_t kClassLabelFirst = 10362;
constexpr uint32_t kLabelStep = 10;

}  // namespace

VtCalendarDetailFormats VtCalendarDetailFormats::FromSettings() {
    VtCalendarDetailFormats formats;
    APConfigSystem_GetDateFormat(&formats.date);
    APConfigSystem_GetTimeFormat(&formats.time);
    return formats;
}

VtCalendarDetailText::VtCalendarDetailText(const _EventRecInfo& record,
                                           const _EventAlertInfo* alert,
                                           const VtCalendarDetailFormats& formats) {
    const bool allDay = record.allDay != 0;
    Add(kDetailSubjectText, kCaptionSubject, SubjectText(record));
    Add(kDetailLocationText, kCaptionLocation, FieldText(record.location));
    Add(kDetailStartText, kCaptionStart, MomentText(record.startStamp, allDay, formats));
    Add(kDetailEndText, kCaptionEnd, MomentText(record.endStamp, allDay, formats));
    mRows[mRows.size() - 2].dateAndTime = mRows.back().dateAndTime = !allDay;
    Add(kDetailAllDayText, kCaptionAllDay, APGetStr(allDay ? kTextYes : kTextNo));
    Add(kDetailRepeatText, kCaptionRepeat, VtCalendarRecurText(record, formats.date));
    Add(kDetailAlarmText, kCaptionAlarm, APGetStr(AlarmLabel(AlarmChoice(alert))));
    Add(kDetailColourText, kCaptionColour, APGetStr(ColourLabel(record.colour)));
    mRows.back().swatch = true;
    mRows.back().colour = VtCalendarEventColour(record.colour);
    Add(kDetailClassText, kCaptionClass, APGetStr(ClassLabel(record.classChoice)));
    Add(kDetailNotesText, kCaptionNotes, FieldText(record.notes));
}

void VtCalendarDetailText::Add(uint32_t paneID, uint32_t caption, PLBasicString<char> value,
                               bool multiLine) {
    mRows.push_back(
        {paneID, caption, std::move(value), multiLine, false, false, PLRGBColor(0, 0, 0)});
}

PLBasicString<char> VtCalendarDetailText::ValueOf(uint32_t paneID) const {
    for (const VtCalendarDetailRow& row : mRows) {
        if (row.paneID == paneID) {
            return row.value;
        }
    }
    return {};
}

PLBasicString<char> VtCalendarDetailText::FieldText(const char (&field)[kAPEventTextSize]) {
    return PLBasicString<char>(field, strnlen(field, kAPEventTextMax));
}

PLBasicString<char> VtCalendarDetailText::SubjectText(const _EventRecInfo& record) {
    PLBasicString<char> subject = FieldText(record.subject);
    return subject.IsEmpty() ? APGetStr(kTextNoSubject) : subject;
}

PLBasicString<char> VtCalendarDetailText::MomentText(int32_t stamp, bool allDay,
                                                     const VtCalendarDetailFormats& formats) {
    if (allDay) {
        return TimeStamp2PLStringDate(stamp, formats.date, true);
    }
    PLTime time;
    TimeStamp2PLDate(stamp, nullptr, &time);
    return TimeStamp2PLStringDate(stamp, formats.date, false) + "  " +
           PLTime::GetStr(time, formats.time);
}

uint32_t VtCalendarDetailText::AlarmChoice(const _EventAlertInfo* alert) {
    // Read as the form reads it, so that the detail view and the form name the same entry.
    return alert != nullptr ? VtCalendarAlarmChoiceOf(*alert) : kAlarmNone;
}

uint32_t VtCalendarDetailText::AlarmLabel(uint32_t choice) {
    if (choice < kAlarmNone || choice > kAlarmOneDay) {
        choice = kAlarmNone;
    }
    return kAlarmLabelFirst + kLabelStep * (choice - kAlarmNone);
}

uint32_t VtCalendarDetailText::ColourLabel(uint32_t colour) {
    return VtCalendarColourOf(colour).labelID;
}

uint32_t VtCalendarDetailText::ClassLabel(uint32_t classChoice) {
    if (classChoice < kAPClassFirst || classChoice > kAPClassLast) {
        classChoice = kAPClassDefault;
    }
    return kClassLabelFirst + kLabelStep * (classChoice - kAPClassFirst);
}
