// The day view's delete dialog: one check-box row per event of the shown day, a top bar whose
// check box selects or clears every row, a delete button that is active while rows are checked,
// and a back button. A recurring event among the checked ones is confirmed once before anything
// is deleted; afterwards the day view, the home screen and the alert application are told.
#pragma once

#include <cstdint>
#include <functional>

#include "APEventQueryNodes.h"
#include "PLView.h"

class PLBitmap;
class VtListViewContainer;
class VtStaticText;
class VtTopBarView;

constexpr uint32_t kDayDeleteTopBar = 12205;
constexpr uint32_t kDayDeleteList = 12201;
constexpr uint32_t kDayDeleteButton = 12203;
constexpr uint32_t kDayDeleteBack = 12204;
constexpr uint32_t kDayDeleteSeriesYes = 12206;
constexpr uint32_t kDayDeleteSeriesNo = 12207;

class VtCalendarDayViewDeleteDialog : public PLView {
public:
    // Asks whether a recurring event may go; returns the id of the button that closed the
    // question (12206, 12207) or another value when it closed otherwise.
    using SeriesQuestion = std::function<long()>;

    VtCalendarDayViewDeleteDialog(uint32_t id, const APDayEventNode* events);
    ~VtCalendarDayViewDeleteDialog() override;
    static VtCalendarDayViewDeleteDialog* Make(uint32_t id, const APDayEventNode* events);

    // One unchecked row per node of `events` (the day view's list, which it keeps owning).
    void Fill(const APDayEventNode* events);
    // Deletes the checked events once a recurring one among them was confirmed; false when the
    // user said no (nothing is deleted then).
    bool DeleteChecked();

    VtListViewContainer* GetList() const { return mList; }
    VtTopBarView* GetTopBar() const { return mTopBar; }
    int GetRowCount() const { return mRowCount; }
    bool IsAllChecked() const { return mAllChecked; }
    bool IsDeleteEnabled() const { return mDeleteEnabled; }
    bool IsDeleteButtonActive();
    // Replaces the modal question (tests answer it themselves).
    void SetSeriesQuestion(SeriesQuestion question) { mSeriesQuestion = std::move(question); }

    void Listen(PLMessage* message) override;
    const char* GetClassName() const override { return "VtCalendarDayViewDeleteDialog"; }

private:
    void KeepInStep();
    void SelectAll(uint32_t value);
    void SetDeleteButtonActive(bool active);
    bool ConfirmSeries();
    void AnnounceDeletion();
    void GoBack();

    VtTopBarView* mTopBar = nullptr;  // sub-pane
    const PLBitmap* mRowIcon = nullptr;
    VtStaticText* mEmptyText = nullptr;  // made but never shown; owned
    PLSize mListSize{210, 240};
    VtListViewContainer* mList = nullptr;  // sub-pane
    const APDayEventNode* mEvents;
    int mRowCount = 0;
    bool mAllChecked = false;
    bool mDeleteEnabled = false;
    SeriesQuestion mSeriesQuestion;
};
