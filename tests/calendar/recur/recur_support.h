// Helpers for the repeat screens' tests: event records with a rule, a listener that keeps what
// the screens broadcast, and the user's actions on an editor's controls by id.
#pragma once

#include <memory>
#include <vector>

#include "APConfig.h"
#include "APEventRecords.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "PLPane.h"
#include "calendar/calendar_support.h"
#include "recur/VtCalendarRecurEditorView.h"
#include "recur/VtCalendarSetRecurMsg.h"

// An event from `start` to `end` (stamps) with a stored rule.
inline _EventRecInfo Record(long start, long end, int kind = 0, int a = 0, int b = 0, int c = 0,
                            long last = 0) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.startStamp = int32_t(start);
    record.endStamp = int32_t(end);
    record.recurValueA = a;
    record.recurValueB = b;
    record.recurValueC = c;
    record.recurKind = kind;
    record.lastStamp = int32_t(last != 0 ? last : end);
    return record;
}

// Keeps a copy of every message it hears.
class MessageLog : public PLListener {
public:
    void Listen(PLMessage* message) override {
        if (message != nullptr) {
            messages.emplace_back(message->Clone());
        }
    }
    // The rule of the last set-rule message, or null when none came.
    const _RecurInfo* LastRule() const {
        for (auto it = messages.rbegin(); it != messages.rend(); ++it) {
            if (auto* rule = dynamic_cast<const VtCalendarSetRecurMsg*>(it->get())) {
                return &rule->GetSetting();
            }
        }
        return nullptr;
    }
    std::vector<std::unique_ptr<PLMessage>> messages;
};

// One thing a user does on an editor, made with Tap, Type or Choose.
struct EditorStep {
    char action;  // 't' tap, 'y' type, 'c' choose
    uint32_t id;
    const char* text;
    long value;
};
inline EditorStep Tap(uint32_t id) {
    return {'t', id, "", 0};
}
inline EditorStep Type(uint32_t id, const char* text) {
    return {'y', id, text, 0};
}
inline EditorStep Choose(uint32_t id, long value) {
    return {'c', id, "", value};
}

// What a user does on an editor, by control id.
class EditorHands {
public:
    explicit EditorHands(VtCalendarRecurEditorView& editor) : mEditor(editor) {}

    PLPane& Pane(uint32_t id) const {
        PLPane* pane = mEditor.FindPane(id);
        if (pane == nullptr) {
            throw std::runtime_error("no pane " + std::to_string(id));
        }
        return *pane;
    }
    std::string Text(uint32_t id) const { return Pane(id).GetString().c_str(); }
    bool On(uint32_t id) const { return Pane(id).GetOnState() != 0; }
    void Type(uint32_t id, const char* text) const { Pane(id).SetString(text, false); }
    // A control reports itself the way a tap makes it: radios turn on first, toggles flip.
    void Tap(uint32_t id) const {
        PLPane& pane = Pane(id);
        if (std::string(pane.GetClassName()) == "VtRadioButton") {
            pane.SetOnState(1, false);
        } else if (std::string(pane.GetClassName()) == "VtButton") {
            pane.SetOnState(pane.GetOnState() != 0 ? 0 : 1, false);
        }
        Send(id);
    }
    void Choose(uint32_t id, long value) const { Pane(id).SetValue(value, false); }
    void Do(const std::vector<EditorStep>& steps) const {
        for (const EditorStep& step : steps) {
            if (step.action == 't') {
                Tap(step.id);
            } else if (step.action == 'y') {
                Type(step.id, step.text);
            } else {
                Choose(step.id, step.value);
            }
        }
    }
    void Send(uint32_t sender) const {
        PLMessage control(kPLMsgControl, sender, 0x3F3F3F3F, kEmptyString, kEmptyString);
        mEditor.Listen(&control);
    }

private:
    VtCalendarRecurEditorView& mEditor;
};

inline void WriteFirstWeekday(int32_t option) {
    APCONFIG_CALENDAR_S config;
    config.startWeekDay = option;
    APConfigCalendar_Write(&config);
}

// True when the store could keep the rule as it stands: a known kind, an interval, pattern and
// end that the editors can make, and a series that ends by 2030 and not before it starts.
inline bool IsPossibleRule(const _RecurInfo& rule, long limit) {
    if (rule.kind == kRecurNone) {
        return true;
    }
    bool pattern = false;
    const int32_t week = rule.pattern >> 8;
    const int32_t low = rule.pattern & 0xFF;
    switch (rule.kind) {
        case kRecurDaily:
            pattern = rule.pattern == 0 || (rule.pattern == 1 && rule.interval == 1);
            break;
        case kRecurWeekly:
            pattern = rule.pattern >= 1 && rule.pattern <= 0x7F;
            break;
        case kRecurMonthly:
        case kRecurYearly:
            pattern = week == 0 ? low >= 1 && low <= 31
                                : week <= 5 && low >= 1 && low <= 7 && (rule.pattern >> 16) == 0;
            break;
        default:
            return false;
    }
    const int maxInterval = rule.kind == kRecurYearly ? 12 : 99;
    const bool interval = rule.interval >= 1 && rule.interval <= maxInterval;
    const bool end = (rule.count == kRecurNoEnd || rule.count >= 1 ||
                      (rule.count == (rule.kind == kRecurDaily ? 0 : -1))) &&
                     rule.lastStamp >= rule.startStamp && rule.lastStamp <= limit;
    return pattern && interval && end;
}
