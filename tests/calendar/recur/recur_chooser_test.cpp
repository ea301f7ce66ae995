// The repeat kind chooser: the row a stored kind opens on (kinds no editor makes included), the bar
// button's label and the back button.
#include <gtest/gtest.h>

#include "APGetStr.h"
#include "PLVector.h"
#include "VtWidgets.h"
#include "recur/VtCalendarRecurMainView.h"
#include "recur_support.h"

namespace {

VtListViewContainer& List(VtCalendarRecurMainView& chooser) {
    return *static_cast<VtListViewContainer*>(chooser.FindPane(kRecurChooserList));
}

std::string BarLabel(VtCalendarRecurMainView& chooser) {
    return chooser.FindPane(kRecurChooserConfirm)->GetString().c_str();
}

void Press(VtCalendarRecurMainView& chooser, uint32_t id) {
    PLMessage control(kPLMsgControl, id, 0, kEmptyString, kEmptyString);
    chooser.Listen(&control);
}

TEST(RecurChooser, OpensOnTheStoredKind) {
    ScratchRoot root;
    const struct {
        const char* name;
        int kind;
        size_t row;
        uint32_t label;
    } rows[] = {{"none", 0, 1, 30092},     {"daily", 1, 2, 11022},  {"weekly", 2, 3, 11022},
                {"monthly", 4, 4, 11022},  {"yearly", 8, 5, 11022}, {"kind 3", 3, 1, 30092},
                {"negative", -1, 1, 30092}};
    VtCalendarRecurMainView chooser(kRecurChooserID, 2);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        chooser.SetKind(row.kind);
        EXPECT_TRUE(List(chooser).IsRowIndexChecked(row.row));
        EXPECT_EQ(List(chooser).GetFocusedRowIndex(), row.row);
        EXPECT_EQ(BarLabel(chooser), APGetStr(row.label).c_str());
    }
}

// The kind each row reports and the bar button's label as rows are checked are walked by the
// repeat scenarios (recur_daily .. recur_yearly store the kind; recur_change_remove reads "Next"
// and "Done"); back is not.
TEST(RecurChooser, BackChangesNothing) {
    ScratchRoot root;
    VtCalendarRecurMainView chooser(kRecurChooserID, 4);
    MessageLog form;
    chooser.AddListener(&form);
    List(chooser).CheckRowByIndex(2, false);
    Press(chooser, kRecurChooserBack);
    EXPECT_TRUE(form.messages.empty());
    EXPECT_EQ(chooser.GetKind(), 4);
}

}  // namespace
