// The new/edit event form: subject, location, all-day switch, start and end with their pickers,
// notes, alarm, colour, class and the repeat row, in a scroll container over the 240x320 screen.
// It keeps the list of controls the user changed, so that leaving with changes asks first, and
// saves through VtCalendarEventSaver.
//
// Commands. The application reads 11525 as "save" and 11526 as "cancel", and so does the form:
// save stores the event, cancel leaves after the discard question. An older numbering called the
// cancel button's command "save"; a person pressing cancel expects to leave, so that reading was
// dropped. The edit form that the day view opens (11570) has its own pair: 11572 saves and 11571
// leaves, and whichever ends the edit, the form reports 11572 to the day view, which then closes
// it. After every save the form tells its listeners "valu" with its own id.
#pragma once

#include <array>

#include <cstdint>
#include <memory>

#include "APEventRecords.h"
#include "PLDate.h"
#include "PLTime.h"
#include "PLVector.h"
#include "PLView.h"
#include "event/VtCalendarEventSaver.h"

class IMEManager;
class PLListener;
class VtButton;
class VtCheckbox;
class VtComboControl;
class VtEditField;
class VtMenu;
class VtScrollContainer;
class VtTopBarView;
class VtCalendarRecurEditorView;
class VtCalendarRecurMainView;

constexpr uint32_t kNewEventViewID = 11500;
constexpr uint32_t kEditEventViewID = 11570;
constexpr uint32_t kNewEventSave = 11525;
constexpr uint32_t kNewEventCancel = 11526;
constexpr uint32_t kEditEventLeave = 11571;
constexpr uint32_t kEditEventSave = 11572;

// Controls of the form.
constexpr uint32_t kFormSubject = 11502;
constexpr uint32_t kFormLocation = 11503;
constexpr uint32_t kFormStartTime = 11504;
constexpr uint32_t kFormStartTimeButton = 11505;
constexpr uint32_t kFormStartDate = 11506;
constexpr uint32_t kFormStartDateButton = 11507;
constexpr uint32_t kFormEndTime = 11508;
constexpr uint32_t kFormEndTimeButton = 11509;
constexpr uint32_t kFormEndDate = 11510;
constexpr uint32_t kFormEndDateButton = 11511;
constexpr uint32_t kFormNotes = 11512;
constexpr uint32_t kFormAlarm = 11520;
constexpr uint32_t kFormColour = 11521;
constexpr uint32_t kFormClass = 11522;
constexpr uint32_t kFormRepeat = 11523;
constexpr uint32_t kFormAllDay = 11528;
constexpr uint32_t kFormScroller = 11529;

class VtCalendarNewEventView : public PLView {
public:
    VtCalendarNewEventView(uint32_t id, PLDate* selectDate, PLTime* selectTime);
    ~VtCalendarNewEventView() override;
    // The form with its controls. `listener` hears the form's reports; for the new-event form
    // (11500) it also hears the save button, for which it calls Save().
    static VtCalendarNewEventView* Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                        PLListener* listener);

    // Starts a new event from the shared selection (null) or edits a copy of a stored one.
    void Prepare(const _EventRecInfo* record);
    // Runs the save: the empty-subject question, the checks and the stores, with their notices.
    // True when the event was stored; then the selection moves to its start and the form is
    // empty again. The form stays as it was when false.
    bool Save();
    // The discard question: true (and the form emptied) when nothing was changed or the user
    // agrees to drop the changes.
    bool AllowLeave();

    // What the form holds now, as the save would copy it.
    VtCalendarFormInput GetInput() const;
    const _EventRecInfo& GetRecord() const { return mSaver.GetRecord(); }
    const PLVector<uint32_t>& GetChangedControls() const { return mChanged; }

    void Listen(PLMessage* message) override;
    // Up and down scroll the rows; the form takes the keys while it is shown, so that they never
    // reach the view hidden behind it.
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarNewEventView"; }

private:
    // --- building
    void BuildControls(PLListener* listener);
    void BuildMenus();
    VtEditField* AddTextField(uint32_t id, uint32_t caption, int top, int height, bool multiLine);
    VtEditField* AddPickerRow(uint32_t fieldId, uint32_t buttonId, uint32_t caption, int top,
                              uint32_t family);
    VtComboControl* AddChoice(uint32_t labelId, uint32_t labelText, uint32_t comboId, VtMenu* menu,
                              int top);
    void AddPane(PLPane* pane);

    // --- loading and showing
    void LoadRecord(uint32_t alarmChoice);
    void ShowTimes(bool redraw);
    void ShowAllDay(bool redraw);
    void ShowRepeat(bool redraw);
    long StartStamp() const;
    long EndStamp() const;
    bool EndsBeforeStart() const;
    void SetEnd(long stamp);

    // --- the changed-controls list
    void MarkChanged(uint32_t id, bool changed);
    void UpdateTimesChanged();
    void UpdateTextChanged(uint32_t id);
    void UpdateChoiceChanged(uint32_t id);
    void UpdateRepeatChanged();

    // --- user actions
    void OnControl(uint32_t command, uint32_t value);
    void OnFieldPressed(uint32_t id);
    void OpenInput(VtEditField* field);
    void InputClosed();
    void PickStartTime();
    void PickStartDate();
    void PickEndTime();
    void PickEndDate();
    void OpenChooser();
    void ChooserDone();
    void OnRecurSetting(PLMessage* message);
    void SaveAndLeave(uint32_t command);
    void Leave();
    void ReportLeave(uint32_t command);
    // Takes the chooser and any editor off the form (they are kept for the next time).
    void DropRecurScreens();
    // The editor of a repeat kind, made on first use; null for a kind without one.
    VtCalendarRecurEditorView* EditorFor(int kind, _EventRecInfo& recordCopy);
    bool AskEmptySubject() const;
    void AfterSave();

    PLDate* mSelectDate;
    PLTime* mSelectTime;
    VtCalendarEventSaver mSaver;
    _EventRecInfo mLoaded;  // the record as loaded, against which changes are detected
    uint32_t mLoadedAlarm = 0;
    PLDate mStartDate;
    PLTime mStartTime;
    PLDate mEndDate;
    PLTime mEndTime;
    PLDate mLoadedStartDate;
    PLTime mLoadedStartTime;
    PLDate mLoadedEndDate;
    PLTime mLoadedEndTime;
    long mTimeFormat = 24;
    long mDateFormat = 0;
    PLVector<uint32_t> mChanged;

    std::unique_ptr<VtMenu> mAlarmMenu;
    std::unique_ptr<VtMenu> mColourMenu;
    std::unique_ptr<VtMenu> mClassMenu;
    std::unique_ptr<IMEManager> mInput;
    // Made on first use and kept for the form's life (an editor per repeat kind, reloaded with the
    // rule each time it opens); sub-panes while shown, owned here while not.
    VtCalendarRecurMainView* mChooser = nullptr;
    std::array<VtCalendarRecurEditorView*, 4> mEditors{};

    // Sub-panes (owned as such).
    VtTopBarView* mTitle = nullptr;
    VtScrollContainer* mScroller = nullptr;
    VtEditField* mSubject = nullptr;
    VtEditField* mLocation = nullptr;
    VtCheckbox* mAllDay = nullptr;
    VtEditField* mStartTimeField = nullptr;
    VtEditField* mStartDateField = nullptr;
    VtEditField* mEndTimeField = nullptr;
    VtEditField* mEndDateField = nullptr;
    VtButton* mStartTimeButton = nullptr;
    VtButton* mEndTimeButton = nullptr;
    VtEditField* mNotes = nullptr;
    VtComboControl* mAlarm = nullptr;
    VtComboControl* mColour = nullptr;
    VtComboControl* mClass = nullptr;
    VtButton* mRepeat = nullptr;
};
