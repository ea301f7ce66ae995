// The save path: copy, keep-time check, event store, daemon alarm, alert record.
#include "event/VtCalendarEventSaver.h"

#include <sys/statfs.h>

#include <cstdio>
#include <cstring>
#include <ctime>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLClock.h"
#include "PLDeviceRoot.h"
#include "PLTimeStamp.h"
#include "event/VtCalendarColours.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/_RecurInfo.h"

namespace {

constexpr int32_t kCalendarAlarmSource = 5;
constexpr int32_t kAlarmActive = 1;

}  // namespace

VtCalendarEventSaver::VtCalendarEventSaver() {
    Reset();
}

void VtCalendarEventSaver::Reset() {
    InitEventRecInfo(&mRecord);
    std::memset(&mAlert, 0, sizeof mAlert);
    mLocalStart = 0;
    mLead = 0;
}

uint32_t VtCalendarEventSaver::Load(const _EventRecInfo& record) {
    mRecord = record;
    std::memset(&mAlert, 0, sizeof mAlert);
    mLead = 0;
    if (!VtCalendarIsColourChoice(mRecord.colour)) {
        mRecord.colour = kColourFirst;
    }
    if (mRecord.classChoice < kClassFirst || mRecord.classChoice > kClassLast) {
        mRecord.classChoice = kClassDefault;
    }
    if (mRecord.alertInfoId <= 0) {
        return kAlarmNone;
    }
    if (APEventAlertDB().GetEventAlertInfo(mRecord.alertInfoId, &mAlert) <= 0) {
        // The record names an alert record that is gone: saving adds a fresh one.
        mRecord.alertInfoId = 0;
        return kAlarmNone;
    }
    const uint32_t choice = VtCalendarAlarmChoiceOf(mAlert);
    VtCalendarLead lead;
    if (VtCalendarLeadOf(choice, lead)) {
        mLead = lead.seconds;
    }
    return choice;
}

void VtCalendarEventSaver::SetRecurrence(int32_t a, int32_t b, int32_t last, int32_t c,
                                         int32_t kind) {
    mRecord.recurValueA = a;
    mRecord.recurValueB = b;
    mRecord.lastStamp = last;
    mRecord.recurValueC = c;
    mRecord.recurKind = kind;
}

void VtCalendarEventSaver::CopyTexts(const VtCalendarFormInput& input) {
    VtCalendarCopyRecordText(mRecord.subject, input.subject);
    VtCalendarCopyRecordText(mRecord.location, input.location);
    VtCalendarCopyRecordText(mRecord.notes, input.notes);
}

bool VtCalendarEventSaver::CopyStamps(const VtCalendarFormInput& input) {
    if (input.allDay) {
        VtCalendarAllDayStamps(input.startDate, input.endDate, mRecord.startStamp,
                               mRecord.endStamp);
        mLocalStart = PLDate2TimeStamp(&input.startDate, nullptr);
        return true;
    }
    const long start = PLDate2TimeStamp(&input.startDate, &input.startTime);
    const long end = PLDate2TimeStamp(&input.endDate, &input.endTime);
    if (start > end) {
        return false;
    }
    mRecord.startStamp = int32_t(start);
    mRecord.endStamp = int32_t(end);
    return true;
}

void VtCalendarEventSaver::CopyAlarm(uint32_t alarmChoice) {
    if (alarmChoice == kAlarmNone) {
        mRecord.alarm = 0;
        if (mRecord.alertInfoId > 0) {
            APEventAlertDB().Delete(mRecord.alertInfoId);
            mRecord.alertInfoId = 0;
            // The alert record and its daemon alarm are gone; an alarm chosen again is new.
            mAlert.id = 0;
            mAlert.daemonId = 0;
        }
    } else {
        mRecord.alarm = 1;
    }
    mAlert.eventTime = mRecord.startStamp;
    mAlert.enabled = mRecord.alarm;
}

void VtCalendarEventSaver::CopyForm(const VtCalendarFormInput& input) {
    CopyTexts(input);
    mRecord.allDay = input.allDay ? 1 : 0;
    if (!CopyStamps(input)) {
        return;
    }
    if (mRecord.recurKind == kRecurNone) {
        mRecord.recurring = 0;
        mRecord.lastStamp = mRecord.endStamp;
    } else {
        mRecord.recurring = 1;
        VtCalendarMoveToFirstOccurrence(mRecord, input.startDate, input.startTime);
        if (mRecord.allDay) {
            // The alarm of an all-day series rings on the day it really starts.
            PLDate first;
            TimeStamp2PLDateUTC(mRecord.startStamp, &first, nullptr);
            mLocalStart = PLDate2TimeStamp(&first, nullptr);
        }
    }
    mRecord.colour = input.colour;
    mRecord.classChoice = input.classChoice;
    CopyAlarm(input.alarmChoice);
}

bool VtCalendarEventSaver::KeepTimeAllows() const {
    long option = 0;
    if ((APConfigCalendar_GetKeepTime(&option) & 0xFF) == 0) {
        return true;
    }
    const std::time_t now = static_cast<std::time_t>(PLClock::Now());
    std::tm local{};
    localtime_r(&now, &local);
    return VtCalendarKeepTimeAllows(option, local, mRecord.lastStamp);
}

bool VtCalendarEventSaver::WriteEvent() {
    APEventRec store;
    if (mRecord.id != 0) {
        const int32_t stored = mRecord.id;
        store.UpdateEventRec(&mRecord);
        if (mRecord.id <= 0) {
            // The stored event is still there: keep its id so that another try rewrites it.
            mRecord.id = stored;
            return false;
        }
        return true;
    }
    mRecord.id = store.AddEventRec(&mRecord);
    if (mRecord.id <= 0) {
        mRecord.id = 0;
        return false;
    }
    return true;
}

void VtCalendarEventSaver::ForgetStoredIds() {
    mRecord.id = 0;
    mRecord.alertInfoId = 0;
    mAlert.id = 0;
    mAlert.daemonId = 0;
}

long VtCalendarEventSaver::RegisterAlarm(uint32_t alarmChoice) {
    VtCalendarLead lead;
    if (VtCalendarLeadOf(alarmChoice, lead)) {
        mAlert.leadAmount = lead.amount;
        mAlert.leadUnit = lead.unit;
        mLead = lead.seconds;
    }
    AP_ALERT_CONTEXT context;
    std::memset(&context, 0, sizeof context);
    long alertTime = 0;
    if (mRecord.allDay) {
        alertTime = mLocalStart - mLead;
        context.localTimeFlag = 1;
        context.utcAlertTime = int32_t(mAlert.eventTime - mLead);
    } else {
        alertTime = mAlert.eventTime - mLead;
    }
    context.alertTime = int32_t(alertTime);
    VtCalendarAlarmRule(context, mRecord, alertTime);
    // A new alarm is registered before its alert record exists, so its owner key reads 0.
    std::snprintf(context.owner, sizeof context.owner, "%d", mRecord.alertInfoId);
    context.sourceKind = kCalendarAlarmSource;
    context.state = kAlarmActive;
    if (mAlert.daemonId <= 0) {
        APAlertDB_AddAlert(&context);
    } else {
        context.alertId = mAlert.daemonId;
        APAlertDB_UpdateAlert(&context);
    }
    mAlert.daemonId = context.alertId;
    return mLead;
}

bool VtCalendarEventSaver::StoreEvent(uint32_t alarmChoice) {
    // One store object stays open for the whole save: each step still uses its own short-lived
    // one, but the store file is not closed in between, so SQLite does not checkpoint and sync
    // its log after every step (which made a save with an alarm take a hundred times a plain
    // insert).
    const APEventRec session;
    if (!WriteEvent()) {
        return false;
    }
    if (mRecord.alarm == 0) {
        return true;
    }
    RegisterAlarm(alarmChoice);
    if (mAlert.daemonId <= 0) {
        // No event may stay whose alarm the daemon does not know.
        APEventRec().DeleteEventRec(mRecord.id);
        ForgetStoredIds();
        return false;
    }
    {
        APEventAlertDB alerts;
        if (mRecord.alertInfoId <= 0) {
            alerts.Add(&mAlert);
        } else {
            alerts.UpdateAlertInfo(&mAlert);
        }
    }
    mRecord.alertInfoId = mAlert.id;
    return WriteEvent();
}

VtCalendarSaveResult VtCalendarEventSaver::Save(const VtCalendarFormInput& input) {
    CopyForm(input);
    if (!KeepTimeAllows()) {
        return VtCalendarSaveResult::KeepTimeRefused;
    }
    return StoreEvent(input.alarmChoice) ? VtCalendarSaveResult::Saved
                                         : VtCalendarSaveResult::StoreFailed;
}

bool VtCalendarEventSaver::IsStorageLow() {
    struct statfs info {};
    if (statfs(PLDeviceRoot::Resolve("/usr/share").c_str(), &info) != 0 &&
        statfs(PLDeviceRoot::Resolve("/").c_str(), &info) != 0) {
        return false;
    }
    return VtCalendarIsLowStorage(int64_t(info.f_bsize), int64_t(info.f_bfree));
}
