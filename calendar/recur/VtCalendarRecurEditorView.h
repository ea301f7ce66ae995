// The frame every repeat editor shares: the view with its title bar, the scroll container that
// holds the editor's rows, the end-of-series rows (no end, after N, until a date), the numeric
// fields and their keypad, the until-date dialog, radio groups, the bottom bar and the answer to
// the form. Each editor adds the rows of its own kind and fills in the rule from them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "APEventRecords.h"
#include "PLDate.h"
#include "PLView.h"
#include "recur/VtCalendarRecurEnd.h"
#include "recur/_RecurInfo.h"

class IMEManager;
class VtEditField;
class VtRadioButton;
class VtScrollContainer;
class VtStaticText;
class VtTopBarView;

constexpr uint32_t kRecurDailyViewID = 11630;
constexpr uint32_t kRecurWeeklyViewID = 11660;
constexpr uint32_t kRecurMonthlyViewID = 11700;
constexpr uint32_t kRecurYearlyViewID = 11730;

// The ids of one editor's frame.
struct VtRecurFrameIds {
    uint32_t view;  // also the sender of the set-rule message
    uint32_t titleBar;
    uint32_t titleText;  // resource id of the title
    uint32_t container;
    uint32_t confirm;
    uint32_t back;
};

// The ids of the end-of-series rows and the container row (y) where their heading sits; the
// rows below it keep the same offsets in every editor.
struct VtRecurEndIds {
    uint32_t heading;
    uint32_t noEnd;
    uint32_t afterCount;
    uint32_t countField;
    uint32_t timesLabel;
    uint32_t untilField;
    uint32_t untilRadio;
    int top;
};

// A refusal of the rule: the notice shown (bitmap and text by resource id, and how long it
// stays up by itself in ms; 0 until closed). No text means the rule was accepted.
struct VtRecurRefusal {
    uint32_t bitmap = 0;
    uint32_t text = 0;
    long displayTime = 0;
    bool IsRefused() const { return text != 0; }
};

class VtCalendarRecurEditorView : public PLView {
public:
    ~VtCalendarRecurEditorView() override;

    // Takes the rule of a copy of the form's record (start and end stamps already refreshed from
    // the form's fields), resets the controls to the defaults and shows the stored rule when the
    // record's kind is this editor's.
    void SetRecur(const _EventRecInfo& recordCopy);
    // Shows the stored rule (the setting) on the controls.
    virtual void ShowRecur() = 0;
    // Reads the controls into the setting; true when it may be sent. A refusal has been shown.
    bool CheckRecur();
    // CheckRecur without the notice: what it would refuse with, if anything.
    VtRecurRefusal EvaluateRecur();

    const _RecurInfo& GetSetting() const { return mSetting; }
    const PLDate& GetUntilDate() const { return mUntilDate; }
    // The count that the last series computation was made for (monthly and yearly editors).
    int32_t GetSeriesCountCache() const { return mSeriesCountCache; }
    // The kind that this editor makes.
    virtual int32_t Kind() const = 0;

    void Listen(PLMessage* message) override;
    const char* GetClassName() const override { return "VtCalendarRecurEditorView"; }

protected:
    // What the editor's own rows made of the rule before the end of the series is checked.
    enum class Fill {
        CheckEnd,   // go on with the end-of-series rows
        AcceptNow,  // send as it stands (a rule turned into no repetition)
        Refuse,     // the refusal has been filled in
    };

    VtCalendarRecurEditorView(const VtRecurFrameIds& frame, const VtRecurEndIds& end);

    // Hooks of the editors.
    // Sets the editor's own rows to their defaults for the setting just taken.
    virtual void ShowDefaults() = 0;
    // Fills kind, interval and pattern (and may move the start) from the editor's rows.
    virtual Fill FillRule(VtRecurRefusal& refusal) = 0;
    // A "ctrl" from a control that is neither a frame button nor in a radio group.
    virtual void ListenControl(uint32_t sender);
    // Daily rules write 0 for "until a date", the others -1.
    virtual bool WritesDailyUntil() const { return false; }
    // The monthly and yearly editors skip recomputing a series end for an unchanged count.
    virtual bool CachesSeriesCount() const { return false; }

    // Building blocks, positions as x, y and sizes as width by height inside the container.
    static PLPoint At(int x, int y) { return PLPoint(y, x); }
    static PLSize Size(int width, int height) { return PLSize(height, width); }
    // A field of at most two digits that opens the keypad when pressed.
    VtEditField* AddNumericField(uint32_t id, int x, int y, int width, const char* text,
                                 uint32_t caption = 0, long captionWidth = 0);
    VtRadioButton* AddRadio(uint32_t id, int x, int y, int width, uint32_t label, bool on);
    VtStaticText* AddLabel(uint32_t id, int x, int y, int width, uint32_t label);
    // Adds a built control to the container (in table order) with the frame's background.
    void AddRow(PLPane* pane);
    // Radios of which exactly one is on.
    void AddRadioGroup(std::vector<VtRadioButton*> group);
    // Adds the end rows, puts the container on the view, loads the record and adds the bottom
    // bar. The editor's constructor calls it once its own rows are in the container.
    void FinishFrame(const _EventRecInfo& recordCopy);
    // Takes the controls down (and the keypad off them) before an editor's own members go.
    void TakeDownPanes();

    // Reads a numeric field the way the platform does: an empty field is 0.
    static int32_t FieldNumber(const VtEditField& field);
    // Shows a number in a two-digit field, clamped to 0..99 so that it is shown whole.
    static void ShowNumber(VtEditField& field, int32_t value);
    // The start and end of the setting as dates.
    PLDate StartDate() const;
    PLDate EndDate() const;
    bool IsUntilMode() const;
    // Shows the end mode of a stored rule: no end, until a date (a count below 1) or after N.
    void ShowEnd();

    _RecurInfo mSetting;
    int32_t mSeriesCountCache = 0;
    PLDate mUntilDate;

private:
    void BuildEndRows(const VtRecurEndIds& end);
    void AddFrameButtons();
    void ShowEndDefaults();
    void ShowUntilDate();
    VtRecurEndInput EndInput();
    void OpenKeypad(VtEditField& field);
    void ChooseUntilDate();
    void CloseKeypad();
    void ResizeContainer(int height);
    bool KeepOneOn(uint32_t tapped);
    void Confirm();

    VtRecurFrameIds mIds;
    int32_t mLoadedStart = 0;                 // the start stamp of the record last loaded
    VtTopBarView* mTitleBar = nullptr;        // sub-pane
    VtScrollContainer* mContainer = nullptr;  // sub-pane
    VtStaticText* mEndHeading = nullptr;      // in the container, as are the rows below
    VtRadioButton* mNoEnd = nullptr;
    VtRadioButton* mAfterCount = nullptr;
    VtEditField* mCountField = nullptr;
    VtStaticText* mTimesLabel = nullptr;
    VtEditField* mUntilField = nullptr;
    VtRadioButton* mUntilRadio = nullptr;
    PLSize mScrollSize;
    std::unique_ptr<IMEManager> mIME;
    std::vector<VtEditField*> mNumericFields;
    std::vector<std::vector<VtRadioButton*>> mRadioGroups;
};

// The editor for a kind (1, 2, 4 or 8), made with its view id and loaded from `recordCopy`;
// null for any other kind or a null record. The caller owns it until it is added to a parent.
VtCalendarRecurEditorView* VtCalendarMakeRecurEditor(int kind, _EventRecInfo* recordCopy);
