// The first screen of the repeat setting: five radio rows (none, daily, weekly, monthly, yearly).
// It only remembers the chosen kind and tells its listener (the event form) that a choice was made;
// the form then clears the rule or opens the editor of that kind.
#pragma once

#include <cstdint>

#include "PLView.h"
#include "recur/_RecurInfo.h"

class VtButton;
class VtListViewContainer;
class VtPopupButton;

constexpr uint32_t kRecurChooserID = 11600;
constexpr uint32_t kRecurChooserList = 11608;
constexpr uint32_t kRecurChooserConfirm = 11606;
constexpr uint32_t kRecurChooserBack = 11607;

class VtCalendarRecurMainView : public PLView {
public:
    VtCalendarRecurMainView(unsigned long id, int kind);

    // Checks and focuses the row of `kind` (row 1 for a kind outside 0, 1, 2, 4, 8) and sets the
    // bar button's label. The form calls it before every showing with the record's kind.
    void SetKind(int kind);
    // The kind chosen with the bar button; read by the form when the chooser reports.
    int GetKind() const { return mKind; }

    // The list row (1..5) that stands for a kind, and the kind of a row (-1 for no such row).
    static size_t RowOfKind(int kind);
    static int KindOfRow(long row);

    void Listen(PLMessage* message) override;
    const char* GetClassName() const override { return "VtCalendarRecurMainView"; }

private:
    void BuildList();
    void BuildBar();
    // "Done" while no repetition is checked (the choice ends here), "Next" when an editor follows.
    void UpdateBarLabel();
    long CheckedRow() const;
    void Choose();

    VtListViewContainer* mList = nullptr;  // sub-pane
    int32_t mKind = kRecurNone;
    VtPopupButton* mMenuButton = nullptr;  // sub-pane
    VtButton* mBarButton = nullptr;        // sub-pane
    VtButton* mBackButton = nullptr;       // sub-pane
};
