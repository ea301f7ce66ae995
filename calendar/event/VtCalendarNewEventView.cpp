// The event form: building the rows, loading a record, the pickers, the changed-controls list, the
// repeat screens, and the save and leave commands around VtCalendarEventSaver.
#include "event/VtCalendarNewEventView.h"

#include <cassert>
#include <cstring>

#include "APConfig.h"
#include "APGetStr.h"
#include "IMEManager.h"
#include "IMEManagerFactory.h"
#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLFont.h"
#include "PLMenuItem.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "PLTimeStamp.h"
#include "VtComboMenuItem.h"
#include "VtScrollPane.h"
#include "VtWidgets.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarHelpers.h"
#include "event/VtCalendarColours.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/VtCalendarRecurEditorView.h"
#include "recur/VtCalendarRecurMainView.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

// Layout inside the scroll container (content width: the screen less the scroll bar).
constexpr int kTitleHeight = 29;
constexpr int kBarTop = 239;
constexpr int kScrollBarWidth = 20;
constexpr int kRowHeight = 30;
constexpr int kPitch = 34;
constexpr int kLeft = 4;
constexpr int kContentWidth = kPLScreenWidth - kScrollBarWidth;
constexpr int kCaptionWidth = 62;
// The choice rows' labels are short; their boxes get the room for entries like "15 minutes
// before".
constexpr int kChoiceCaptionWidth = 50;
constexpr int kFieldWidth = kContentWidth - 2 * kLeft;
constexpr int kPickerWidth = 26;
constexpr int kPickerLeft = kContentWidth - kLeft - kPickerWidth;
constexpr int kPickerFieldWidth = kPickerLeft - 2 - kLeft;
constexpr int kNotesHeight = 64;
constexpr int kRepeatWidth = 210;
// The keyboard covers the screen from y 180; the container starts at 45 + 29.
constexpr int kScrollerTop = kTitleHeight;
constexpr int kScrollerHeight = kBarTop - kTitleHeight;
constexpr int kScrollerHeightWithKeyboard = 180 - 45 - kTitleHeight;

// Record fields are 600 bytes: a 600-byte limit holds 200 characters of any script (Chinese takes
// three bytes a character) and never more than the record keeps.
constexpr long kTextLimit = kAPEventTextMax;
constexpr size_t kTypedCharacters = 200;
constexpr long kInputMask = 15;
constexpr long kTimePickerMode = 1;

// Dialogs and their texts.
constexpr uint32_t kQuestionPicture = 32130;
constexpr uint32_t kNoticePicture = 32060;
constexpr uint32_t kTextEmptySubject = 10872;
constexpr uint32_t kTextEndDateBeforeStart = 10882;
constexpr uint32_t kTextEndBeforeStart = 10892;
constexpr uint32_t kTextKeepTime = 10902;
constexpr uint32_t kTextDiscard = 31112;
constexpr uint32_t kTextStorageFull = 31322;
constexpr uint32_t kSubjectYes = 11565;
constexpr uint32_t kSubjectNo = 11566;
constexpr uint32_t kTextNewEvent = 10002;
constexpr uint32_t kTextRepeat = 10402;
constexpr uint32_t kTextSave = 30092;

// Picker button bitmap families (a calendar page and a clock face).
constexpr uint32_t kDateFamily = 10425;
constexpr uint32_t kTimeFamily = 10415;

constexpr uint32_t kAlarmTexts[] = {10152, 10162, 10172, 10182, 10192, 10202,
                                    10212, 10222, 10232, 10242, 10252};
constexpr uint32_t kClassTexts[] = {10362, 10372, 10382, 10392};
// Kind names for the repeat row: none, daily, weekly, monthly, yearly.
constexpr uint32_t kKindTexts[][2] = {{kRecurNone, 10452},
                                      {kRecurDaily, 10462},
                                      {kRecurWeekly, 10472},
                                      {kRecurMonthly, 10482},
                                      {kRecurYearly, 10492}};

PLEventLoop& Loop() {
    return PLAppContext::GetInstance()->GetEventLoop();
}

PLBasicString<char> Text(uint32_t id) {
    return APGetStr(id);
}

bool SameRecurrence(const _EventRecInfo& a, const _EventRecInfo& b) {
    return a.recurValueA == b.recurValueA && a.recurValueB == b.recurValueB &&
           a.lastStamp == b.lastStamp && a.recurValueC == b.recurValueC &&
           a.recurKind == b.recurKind;
}

void SelectValue(VtComboControl* combo, uint32_t value) {
    combo->SetValue(long(value), false);
}

}  // namespace

VtCalendarNewEventView::VtCalendarNewEventView(uint32_t id, PLDate* selectDate, PLTime* selectTime)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)),
      mSelectDate(selectDate),
      mSelectTime(selectTime) {
    assert(selectDate != nullptr && selectTime != nullptr && "the shared selection");
    InitEventRecInfo(&mLoaded);
    BuildMenus();
}

VtCalendarNewEventView::~VtCalendarNewEventView() {
    if (mInput) {
        mInput->ReleaseView(this);
    }
    // The repeat screens are sub-panes while shown; otherwise they are this form's to delete.
    DropRecurScreens();
    if (mChooser != nullptr && mChooser->GetParent() == nullptr) {
        delete mChooser;
    }
    mChooser = nullptr;
    for (VtCalendarRecurEditorView*& editor : mEditors) {
        delete editor;
        editor = nullptr;
    }
    // The combos refer to the menus: take the panes down before the menus go.
    while (!GetSubPanes().empty()) {
        PLPane* pane = GetSubPanes().back();
        RemoveSubPane(pane);
        delete pane;
    }
}

VtCalendarNewEventView* VtCalendarNewEventView::Make(uint32_t id, PLDate* selectDate,
                                                     PLTime* selectTime, PLListener* listener) {
    auto* view = new VtCalendarNewEventView(id, selectDate, selectTime);
    view->AddListener(listener);
    view->BuildControls(listener);
    return view;
}

// ---------------------------------------------------------------------------------------------
// Building

void VtCalendarNewEventView::BuildMenus() {
    mAlarmMenu.reset(MakeVtComboMenu(kEmptyString, 11517, nullptr));
    for (uint32_t i = 0; i <= kAlarmOneDay - kAlarmNone; ++i) {
        mAlarmMenu->AddMenuItem(new PLMenuItem(Text(kAlarmTexts[i]), kAlarmNone + i));
    }
    mColourMenu.reset(MakeVtComboColorMenu(kEmptyString, 11518, nullptr));
    const VtCalendarColourChoice* colours = VtCalendarColourTable();
    for (int i = 0; i < kColourCount; ++i) {
        mColourMenu->AddMenuItem(
            new VtComboMenuItem(Text(colours[i].labelID), colours[i].commandID, colours[i].swatch));
    }
    mClassMenu.reset(MakeVtComboMenu(kEmptyString, 11519, nullptr));
    for (uint32_t i = 0; i <= kClassLast - kClassFirst; ++i) {
        mClassMenu->AddMenuItem(new PLMenuItem(Text(kClassTexts[i]), kClassFirst + i));
    }
    for (VtMenu* menu : {mAlarmMenu.get(), mColourMenu.get(), mClassMenu.get()}) {
        menu->SetFont(PLFont::GetFont(PLFourCC("UC16")));
    }
}

void VtCalendarNewEventView::AddPane(PLPane* pane) {
    mScroller->AddSubPane(pane, false);
}

VtEditField* VtCalendarNewEventView::AddTextField(uint32_t id, uint32_t caption, int top,
                                                  int height, bool multiLine) {
    VtEditField* field = MakeVtEditField(
        id, PLPoint(top, kLeft), PLSize(height, kFieldWidth), kEmptyString, !multiLine, -1, 0, 1,
        kTextLimit, Text(caption), 1, kCaptionWidth, nullptr, true, kVtEditFieldRect, -1, true);
    field->AddListener(this);
    field->GetEditor()->SetScroller(mScroller);
    AddPane(field);
    return field;
}

VtEditField* VtCalendarNewEventView::AddPickerRow(uint32_t fieldId, uint32_t buttonId,
                                                  uint32_t caption, int top, uint32_t family) {
    // The date and time are set with their pickers only: the field opens the picker when pressed.
    VtEditField* field = MakeVtEditField(
        fieldId, PLPoint(top, kLeft), PLSize(kRowHeight, kPickerFieldWidth), kEmptyString, true, -1,
        0, 1, 0, caption != 0 ? Text(caption) : kEmptyString, 1, kCaptionWidth, nullptr, false,
        kVtEditFieldRect, -1, true);
    if (caption == 0) {
        // The date sits under its time, its box in line with the time's box.
        field->SetLocation(PLPoint(top, kLeft + kCaptionWidth), false);
        field->SetSize(PLSize(kRowHeight, kPickerFieldWidth - kCaptionWidth), false);
    }
    field->GetEditor()->SetEditable(false);
    field->AddListener(this);
    AddPane(field);
    PLBitmapFamily* icons = PLAppContext::GetInstance()->GetBitmapFamily(family);
    VtButton* button =
        MakeBmpViewButton(buttonId, PLPoint(top + 3, kPickerLeft), icons,
                          icons == nullptr ? PLBasicString<char>("...") : kEmptyString,
                          kVtButtonPush, false, false, nullptr);
    button->AddListener(this);
    AddPane(button);
    return field;
}

VtComboControl* VtCalendarNewEventView::AddChoice(uint32_t labelId, uint32_t labelText,
                                                  uint32_t comboId, VtMenu* menu, int top) {
    AddPane(MakeStaticText(labelId, PLPoint(top, kLeft), PLSize(kRowHeight, kChoiceCaptionWidth),
                           Text(labelText), 1, false, 0, PLRGBColor(-1, false), nullptr));
    VtComboControl* combo = MakeVtComboControl(
        comboId, PLPoint(top, kLeft + kChoiceCaptionWidth),
        PLSize(kRowHeight, kFieldWidth - kChoiceCaptionWidth), menu, 0, kEmptyString);
    combo->SetFont(PLFont::GetFont(PLFourCC("UC16")), false);
    combo->AddListener(this);
    AddPane(combo);
    return combo;
}

void VtCalendarNewEventView::BuildControls(PLListener* listener) {
    SetHasBmpBackground(true, true);
    mTitle = MakeVtTextTopBar(11501, PLPoint(0, 0), kPLScreenWidth, Text(kTextNewEvent),
                              kEmptyString, 0, 0);
    AddSubPane(mTitle, false);
    mScroller = MakeVtScrollContainer(kFormScroller, PLPoint(kScrollerTop, 0),
                                      PLSize(kScrollerHeight, kPLScreenWidth), true, false,
                                      kScrollBarWidth, true, PLRect(1, 1, 1, 1), nullptr, true);
    mScroller->GetContentPane()->SetScrollSteps(70, 30, 1);
    mScroller->GetContentPane()->SetHasBmpBackground(true, true);
    mScroller->GetScroller()->SetHasBmpBackground(true, true);
    mScroller->GetScroller()->SetAutoScroll(true);
    AddSubPane(mScroller, false);

    int top = 4;
    mSubject = AddTextField(kFormSubject, 10062, top, kRowHeight, false);
    mLocation = AddTextField(kFormLocation, 10072, top += kPitch, kRowHeight, false);
    // The one-line texts take 200 typed characters, whatever their script; the record's 600
    // bytes hold that many even in Chinese.
    for (VtEditField* field : {mSubject, mLocation}) {
        field->GetEditor()->GetModel().SetCharacterLimit(kTypedCharacters);
    }
    mAllDay = MakeCheckbox(kFormAllDay, PLPoint(top += kPitch, kLeft),
                           PLSize(kRowHeight, kFieldWidth), Text(10082), false, nullptr, nullptr);
    mAllDay->AddListener(this);
    AddPane(mAllDay);
    mStartTimeField =
        AddPickerRow(kFormStartTime, kFormStartTimeButton, 10092, top += kPitch, kTimeFamily);
    mStartTimeButton = static_cast<VtButton*>(mScroller->FindPane(kFormStartTimeButton));
    mStartDateField =
        AddPickerRow(kFormStartDate, kFormStartDateButton, 0, top += kPitch, kDateFamily);
    mEndTimeField =
        AddPickerRow(kFormEndTime, kFormEndTimeButton, 10102, top += kPitch, kTimeFamily);
    mEndTimeButton = static_cast<VtButton*>(mScroller->FindPane(kFormEndTimeButton));
    mEndDateField = AddPickerRow(kFormEndDate, kFormEndDateButton, 0, top += kPitch, kDateFamily);
    mNotes = AddTextField(kFormNotes, 10112, top += kPitch, kNotesHeight, true);
    top += kNotesHeight - kRowHeight;
    mAlarm = AddChoice(11514, 10122, kFormAlarm, mAlarmMenu.get(), top += kPitch);
    mColour = AddChoice(11515, 10132, kFormColour, mColourMenu.get(), top += kPitch);
    mClass = AddChoice(11516, 10142, kFormClass, mClassMenu.get(), top += kPitch);
    mRepeat =
        MakeVtGeneralButton(kFormRepeat, PLPoint(top += kPitch, (kContentWidth - kRepeatWidth) / 2),
                            kRepeatWidth, Text(kTextRepeat));
    mRepeat->AddListener(this);
    AddPane(mRepeat);

    const bool editForm = GetID() == kEditEventViewID;
    // The new-event form's save goes to the application, which runs Save() and takes the form
    // away; the edit form saves itself and reports when it is done.
    VtButton* save =
        MakeBmpBarButton(editForm ? kEditEventSave : kNewEventSave, PLPoint(kBarTop, 43),
                         PLSize(36, 154), nullptr, Text(kTextSave), 1, false, false, nullptr);
    save->AddListener(editForm || listener == nullptr ? static_cast<PLListener*>(this) : listener);
    AddSubPane(save, false);
    VtButton* cancel =
        MakeCSTBackButton(editForm ? kEditEventLeave : kNewEventCancel, PLPoint(kBarTop, 197));
    cancel->AddListener(this);
    AddSubPane(cancel, false);

    mInput.reset(IMEManagerFactory::createIMEManager());
    mInput->RegisterView(this);
}

// ---------------------------------------------------------------------------------------------
// Loading and showing

void VtCalendarNewEventView::Prepare(const _EventRecInfo* record) {
    if (mInput) {
        mInput->Close();
    }
    DropRecurScreens();
    APConfigSystem_GetTimeFormat(&mTimeFormat);
    APConfigSystem_GetDateFormat(&mDateFormat);
    uint32_t alarm = kAlarmNone;
    if (record != nullptr) {
        alarm = mSaver.Load(*record);
    } else {
        mSaver.Reset();
        _EventRecInfo& fresh = mSaver.GetRecord();
        fresh.colour = kColourFirst;
        fresh.classChoice = kClassDefault;
        // An hour from the selected hour, as the day view's empty row suggests.
        const PLTime start(mSelectTime->GetHour(), 0, 0);
        fresh.startStamp = int32_t(PLDate2TimeStamp(mSelectDate, &start));
        fresh.endStamp = int32_t(fresh.startStamp + 3600);
        fresh.lastStamp = fresh.endStamp;
    }
    mLoaded = mSaver.GetRecord();
    LoadRecord(alarm);
    mChanged.Clear();
    mScroller->ScrollTo(0, false, false);
    Loop().SetTarget(this);
    mTitle->SetString(record != nullptr && mLoaded.subject[0] != '\0'
                          ? VtCalendarRecordText(mLoaded.subject)
                          : Text(kTextNewEvent),
                      false);
}

void VtCalendarNewEventView::LoadRecord(uint32_t alarmChoice) {
    const _EventRecInfo& record = mSaver.GetRecord();
    mSubject->SetString(VtCalendarRecordText(record.subject), false);
    mLocation->SetString(VtCalendarRecordText(record.location), false);
    mNotes->SetString(VtCalendarRecordText(record.notes), false);
    if (record.allDay) {
        // All-day events are stored as their dates read as UTC.
        TimeStamp2PLDateUTC(record.startStamp, &mStartDate, nullptr);
        TimeStamp2PLDateUTC(record.endStamp, &mEndDate, nullptr);
        mStartTime = PLTime(mSelectTime->GetHour(), 0, 0);
        mEndTime = PLTime((mSelectTime->GetHour() + 1) % 24, 0, 0);
    } else {
        TimeStamp2PLDate(record.startStamp, &mStartDate, &mStartTime);
        TimeStamp2PLDate(record.endStamp, &mEndDate, &mEndTime);
    }
    mLoadedStartDate = mStartDate;
    mLoadedStartTime = mStartTime;
    mLoadedEndDate = mEndDate;
    mLoadedEndTime = mEndTime;
    mAllDay->SetOnState(record.allDay ? 1 : 0, false);
    mLoadedAlarm = alarmChoice;
    SelectValue(mAlarm, alarmChoice);
    SelectValue(mColour, record.colour);
    SelectValue(mClass, record.classChoice);
    ShowTimes(false);
    ShowAllDay(false);
    ShowRepeat(false);
}

void VtCalendarNewEventView::ShowTimes(bool redraw) {
    mStartTimeField->SetString(PLTime::GetStr(mStartTime, mTimeFormat), redraw);
    mStartDateField->SetString(PLDate2PLString(mStartDate, mDateFormat), redraw);
    mEndTimeField->SetString(PLTime::GetStr(mEndTime, mTimeFormat), redraw);
    mEndDateField->SetString(PLDate2PLString(mEndDate, mDateFormat), redraw);
}

void VtCalendarNewEventView::ShowAllDay(bool redraw) {
    // An all-day event has no times: their fields and pickers rest while the switch is on.
    const bool timed = mAllDay->GetOnState() == 0;
    mStartTimeField->SetEnabled(timed, redraw);
    mEndTimeField->SetEnabled(timed, redraw);
    mStartTimeButton->SetEnabled(timed, redraw);
    mEndTimeButton->SetEnabled(timed, redraw);
}

void VtCalendarNewEventView::ShowRepeat(bool redraw) {
    const int32_t kind = mSaver.GetRecord().recurKind;
    uint32_t name = kKindTexts[0][1];
    for (const auto& row : kKindTexts) {
        if (int32_t(row[0]) == kind) {
            name = row[1];
        }
    }
    mRepeat->SetString(Text(kTextRepeat) + PLBasicString<char>(": ") + Text(name), redraw);
}

long VtCalendarNewEventView::StartStamp() const {
    return PLDate2TimeStamp(&mStartDate, &mStartTime);
}

long VtCalendarNewEventView::EndStamp() const {
    return PLDate2TimeStamp(&mEndDate, &mEndTime);
}

bool VtCalendarNewEventView::EndsBeforeStart() const {
    if (mAllDay->GetOnState() != 0) {
        return mEndDate < mStartDate;
    }
    return StartStamp() > EndStamp();
}

void VtCalendarNewEventView::SetEnd(long stamp) {
    TimeStamp2PLDate(stamp, &mEndDate, &mEndTime);
}

VtCalendarFormInput VtCalendarNewEventView::GetInput() const {
    VtCalendarFormInput input;
    input.subject = mSubject->GetString();
    input.location = mLocation->GetString();
    input.notes = mNotes->GetString();
    input.allDay = mAllDay->GetOnState() != 0;
    input.startDate = mStartDate;
    input.startTime = mStartTime;
    input.endDate = mEndDate;
    input.endTime = mEndTime;
    input.colour = uint32_t(mColour->GetValue());
    input.classChoice = uint32_t(mClass->GetValue());
    input.alarmChoice = uint32_t(mAlarm->GetValue());
    return input;
}

// ---------------------------------------------------------------------------------------------
// The changed-controls list

void VtCalendarNewEventView::MarkChanged(uint32_t id, bool changed) {
    for (size_t i = 0; i < mChanged.GetCount(); ++i) {
        if (mChanged[i] == id) {
            if (!changed) {
                mChanged.RemoveAt(i);
            }
            return;
        }
    }
    if (changed) {
        mChanged.Append(id);
    }
}

void VtCalendarNewEventView::UpdateTimesChanged() {
    MarkChanged(kFormStartTime, mStartTime != mLoadedStartTime);
    MarkChanged(kFormStartDate, mStartDate != mLoadedStartDate);
    MarkChanged(kFormEndTime, mEndTime != mLoadedEndTime);
    MarkChanged(kFormEndDate, mEndDate != mLoadedEndDate);
}

void VtCalendarNewEventView::UpdateTextChanged(uint32_t id) {
    const char* loaded = id == kFormSubject    ? mLoaded.subject
                         : id == kFormLocation ? mLoaded.location
                                               : mLoaded.notes;
    const VtEditField* field = id == kFormSubject    ? mSubject
                               : id == kFormLocation ? mLocation
                                                     : mNotes;
    char typed[kAPEventTextSize];
    VtCalendarCopyRecordText(typed, field->GetString());
    MarkChanged(id, std::strncmp(typed, loaded, kAPEventTextSize) != 0);
}

void VtCalendarNewEventView::UpdateChoiceChanged(uint32_t id) {
    switch (id) {
        case kFormAlarm:
            MarkChanged(id, uint32_t(mAlarm->GetValue()) != mLoadedAlarm);
            break;
        case kFormColour:
            MarkChanged(id, uint32_t(mColour->GetValue()) != mLoaded.colour);
            break;
        case kFormClass:
            MarkChanged(id, uint32_t(mClass->GetValue()) != mLoaded.classChoice);
            break;
        default:
            break;
    }
}

void VtCalendarNewEventView::UpdateRepeatChanged() {
    MarkChanged(kFormRepeat, !SameRecurrence(mSaver.GetRecord(), mLoaded));
}

// ---------------------------------------------------------------------------------------------
// Messages

void VtCalendarNewEventView::Listen(PLMessage* message) {
    assert(message != nullptr && "a message to handle");
    if (message == nullptr) {
        return;
    }
    const uint32_t sender = message->GetSenderID();
    switch (message->GetMessageID()) {
        case kPLMsgControl:
            OnControl(sender, message->GetUserMessageID());
            break;
        case kRecurMessageID:
            OnRecurSetting(message);
            break;
        case kPLMsgSelect:
            UpdateChoiceChanged(sender);
            break;
        case kPLMsgEditPressedAlt:
            OnFieldPressed(sender);
            break;
        case kPLMsgEditChanged: {
            const auto* state = dynamic_cast<const VtStateMessage*>(message);
            if (state != nullptr && state->GetState() == kVtEditTextChanged) {
                UpdateTextChanged(sender);
            }
            break;
        }
        case kPLMsgInputMethod: {
            const auto* state = dynamic_cast<const VtStateMessage*>(message);
            if (state != nullptr && state->GetState() == kVtIMEClosed) {
                InputClosed();
            }
            break;
        }
        default:
            break;
    }
}

void VtCalendarNewEventView::OnControl(uint32_t command, uint32_t value) {
    switch (command) {
        case kFormStartTimeButton:
            PickStartTime();
            break;
        case kFormStartDateButton:
            PickStartDate();
            break;
        case kFormEndTimeButton:
            PickEndTime();
            break;
        case kFormEndDateButton:
            PickEndDate();
            break;
        case kFormRepeat:
            OpenChooser();
            break;
        case kRecurChooserID:
            ChooserDone();
            break;
        case kFormAllDay:
            MarkChanged(kFormAllDay, (mAllDay->GetOnState() != 0) != (mLoaded.allDay != 0));
            ShowAllDay(true);
            break;
        case kNewEventSave:
            // Only when no application listens: it runs the save itself otherwise.
            SaveAndLeave(command);
            break;
        case kEditEventSave:
            SaveAndLeave(command);
            break;
        case kNewEventCancel:
        case kEditEventLeave:
            if (AllowLeave()) {
                Leave();
                ReportLeave(GetID() == kEditEventViewID ? kEditEventSave : kNewEventCancel);
            }
            break;
        default:
            (void)value;
            break;
    }
}

void VtCalendarNewEventView::OnFieldPressed(uint32_t id) {
    switch (id) {
        case kFormSubject:
            OpenInput(mSubject);
            break;
        case kFormLocation:
            OpenInput(mLocation);
            break;
        case kFormNotes:
            OpenInput(mNotes);
            break;
        case kFormStartTime:
            PickStartTime();
            break;
        case kFormStartDate:
            PickStartDate();
            break;
        case kFormEndTime:
            PickEndTime();
            break;
        case kFormEndDate:
            PickEndDate();
            break;
        default:
            break;
    }
}

void VtCalendarNewEventView::OpenInput(VtEditField* field) {
    // The keyboard takes the lower part of the screen: the rows shrink to what it leaves and the
    // field is scrolled into that part.
    mScroller->SetSize(PLSize(kScrollerHeightWithKeyboard, kPLScreenWidth), true);
    mInput->Open(kInputMask, this);
    mInput->Attach(field->GetEditor());
    mScroller->EnsureVisible(*field);
    Redraw();
}

void VtCalendarNewEventView::InputClosed() {
    mScroller->SetSize(PLSize(kScrollerHeight, kPLScreenWidth), true);
    Redraw();
}

// ---------------------------------------------------------------------------------------------
// Pickers

void VtCalendarNewEventView::PickStartTime() {
    if (mAllDay->GetOnState() != 0) {
        return;
    }
    const long before = StartStamp();
    const long duration = EndStamp() - before;
    if (ShowTimePicker(mStartTime, mTimeFormat, kTimePickerMode) != 0) {
        return;
    }
    // The event keeps its length: the end moves with the start.
    SetEnd(StartStamp() + duration);
    ShowTimes(true);
    UpdateTimesChanged();
}

void VtCalendarNewEventView::PickStartDate() {
    const long before = StartStamp();
    const long duration = EndStamp() - before;
    if (ShowDateDialog(mStartDate) != 1) {
        return;
    }
    SetEnd(StartStamp() + duration);
    ShowTimes(true);
    UpdateTimesChanged();
}

void VtCalendarNewEventView::PickEndTime() {
    if (mAllDay->GetOnState() != 0) {
        return;
    }
    const PLTime kept = mEndTime;
    if (ShowTimePicker(mEndTime, mTimeFormat, kTimePickerMode) != 0) {
        return;
    }
    if (EndsBeforeStart()) {
        mEndTime = kept;
        ShowInfoDialog(kNoticePicture, kTextEndBeforeStart, 0, 0, 0);
    }
    ShowTimes(true);
    UpdateTimesChanged();
}

void VtCalendarNewEventView::PickEndDate() {
    const PLDate kept = mEndDate;
    if (ShowDateDialog(mEndDate) != 1) {
        return;
    }
    if (EndsBeforeStart()) {
        mEndDate = kept;
        ShowInfoDialog(kNoticePicture, kTextEndDateBeforeStart, 0, 0, 0);
    }
    ShowTimes(true);
    UpdateTimesChanged();
}

// ---------------------------------------------------------------------------------------------
// The repeat screens

void VtCalendarNewEventView::OpenChooser() {
    const int32_t kind = mSaver.GetRecord().recurKind;
    if (mChooser == nullptr) {
        mChooser = new VtCalendarRecurMainView(kRecurChooserID, kind);
        mChooser->AddListener(this);
    }
    mChooser->SetKind(kind);
    if (mInput) {
        mInput->Close();
    }
    AddSubPane(mChooser, true);
    Loop().SetTarget(mChooser);
}

void VtCalendarNewEventView::ChooserDone() {
    if (mChooser == nullptr || mChooser->GetParent() != this) {
        // A chooser left with its back button may still hold the keys; what it reports then
        // is no choice.
        return;
    }
    const int kind = mChooser->GetKind();
    RemoveSubPane(mChooser);
    Loop().SetTarget(this);
    if (kind == kRecurNone) {
        _EventRecInfo& record = mSaver.GetRecord();
        record.recurKind = kRecurNone;
        UpdateRepeatChanged();
        ShowRepeat(false);
        Redraw();
        return;
    }
    // The editor starts from the rule and from the start and end the form shows now.
    _EventRecInfo copy = mSaver.GetRecord();
    if (mAllDay->GetOnState() != 0) {
        VtCalendarAllDayStamps(mStartDate, mEndDate, copy.startStamp, copy.endStamp);
    } else {
        copy.startStamp = int32_t(StartStamp());
        copy.endStamp = int32_t(EndStamp());
    }
    if (copy.recurKind == kRecurNone) {
        copy.lastStamp = copy.endStamp;
    }
    VtCalendarRecurEditorView* editor = EditorFor(kind, copy);
    if (editor == nullptr) {
        Redraw();
        return;
    }
    editor->SetRecur(copy);
    AddSubPane(editor, true);
    Loop().SetTarget(editor);
}

void VtCalendarNewEventView::OnRecurSetting(PLMessage* message) {
    const auto* setting = dynamic_cast<const VtCalendarSetRecurMsg*>(message);
    if (setting == nullptr) {
        return;
    }
    const _RecurInfo& rule = setting->GetSetting();
    mSaver.SetRecurrence(rule.interval, rule.pattern, rule.lastStamp, rule.count, rule.kind);
    UpdateRepeatChanged();
    ShowRepeat(false);
    Loop().SetTarget(this);
    Redraw();
}

namespace {

// The slot of a repeat kind's editor; -1 for a kind without one.
int EditorSlot(int kind) {
    switch (kind) {
        case kRecurDaily:
            return 0;
        case kRecurWeekly:
            return 1;
        case kRecurMonthly:
            return 2;
        case kRecurYearly:
            return 3;
        default:
            return -1;
    }
}

}  // namespace

VtCalendarRecurEditorView* VtCalendarNewEventView::EditorFor(int kind, _EventRecInfo& recordCopy) {
    const int slot = EditorSlot(kind);
    if (slot < 0) {
        return nullptr;
    }
    VtCalendarRecurEditorView*& editor = mEditors[size_t(slot)];
    if (editor == nullptr) {
        editor = VtCalendarMakeRecurEditor(kind, &recordCopy);
        if (editor != nullptr) {
            editor->AddListener(this);
        }
    }
    return editor;
}

void VtCalendarNewEventView::DropRecurScreens() {
    if (mChooser != nullptr && mChooser->GetParent() == this) {
        RemoveSubPane(mChooser);
    }
    for (VtCalendarRecurEditorView* editor : mEditors) {
        if (editor != nullptr && editor->GetParent() != nullptr) {
            editor->GetParent()->RemoveSubPane(editor);
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Saving and leaving

bool VtCalendarNewEventView::AskEmptySubject() const {
    return AskCalendarQuestion(kQuestionPicture, kEmptyString, Text(kTextEmptySubject), kSubjectYes,
                               30002, kSubjectNo) == long(kSubjectYes);
}

bool VtCalendarNewEventView::Save() {
    if (mInput) {
        mInput->Close();
    }
    if (mSubject->GetString().c_str()[0] == '\0' && !AskEmptySubject()) {
        return false;
    }
    const VtCalendarFormInput input = GetInput();
    switch (mSaver.Save(input)) {
        case VtCalendarSaveResult::KeepTimeRefused:
            ShowInfoDialog(kNoticePicture, kTextKeepTime, 0, 0, 0);
            return false;
        case VtCalendarSaveResult::StoreFailed:
            if (VtCalendarEventSaver::IsStorageLow()) {
                ShowInfoDialog(kNoticePicture, kTextStorageFull, 0, 0, 0);
            }
            return false;
        case VtCalendarSaveResult::Saved:
            break;
    }
    AfterSave();
    return true;
}

void VtCalendarNewEventView::AfterSave() {
    const _EventRecInfo& record = mSaver.GetRecord();
    PLDate day;
    PLTime time;
    if (record.allDay) {
        TimeStamp2PLDateUTC(record.startStamp, &day, nullptr);
        time = mStartTime;
    } else {
        TimeStamp2PLDate(record.startStamp, &day, &time);
    }
    mSelectTime->SetHour(time.GetHour());
    SetDateFields(*mSelectDate, day.year, day.month, day.day);
    PLMessage changed(kPLMsgValue, GetID(), kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&changed);
    VtCalendarBroadcastEventsChanged();
    mSaver.Reset();
    mLoaded = mSaver.GetRecord();
    mChanged.Clear();
}

void VtCalendarNewEventView::SaveAndLeave(uint32_t command) {
    if (Save()) {
        Leave();
        ReportLeave(command);
    }
}

bool VtCalendarNewEventView::AllowLeave() {
    if (!mChanged.IsEmpty()) {
        if (mInput) {
            mInput->Close();
        }
        if (ShowInfoDialog(kQuestionPicture, kTextDiscard, 1, 0, 0) !=
            long(kInfoDialogFirstButton)) {
            return false;
        }
        mChanged.Clear();
    }
    mSaver.Reset();
    return true;
}

void VtCalendarNewEventView::Leave() {
    if (mInput) {
        mInput->Close();
    }
    DropRecurScreens();
}

void VtCalendarNewEventView::ReportLeave(uint32_t command) {
    PLMessage leave(kPLMsgControl, command, kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&leave);
}

bool VtCalendarNewEventView::DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) {
    mScroller->GetContentPane()->DoKeyCommand(key, repeat, modifiers);
    return true;
}

void VtCalendarNewEventView::Draw(PLDrawContext& context) {
    PLThemeManager::GetCurrentTheme()->DrawBmpBackground(context, *this);
}
