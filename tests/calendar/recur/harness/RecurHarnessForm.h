// A stand-in for the event form while the repeat screens are tried on their own: it holds one
// event record (event 1 of the store, else a new one-hour event today at 10:00), opens the kind
// chooser and the editors exactly as the form does, takes their answer into the record, shows
// the rule's fields as text for scripts to check and can save the record to the store.
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "APEventRecords.h"
#include "PLView.h"

class VtCalendarRecurEditorView;
class VtCalendarRecurMainView;
class VtStaticText;

constexpr uint32_t kHarnessRepeatButton = 19001;
constexpr uint32_t kHarnessSaveButton = 19003;
constexpr uint32_t kHarnessRuleText = 19010;
constexpr uint32_t kHarnessLastText = 19011;
constexpr uint32_t kHarnessStartText = 19012;
constexpr uint32_t kHarnessSavedText = 19013;

class RecurHarnessForm : public PLView {
public:
    RecurHarnessForm();
    ~RecurHarnessForm() override;

    void Listen(PLMessage* message) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "RecurHarnessForm"; }

private:
    void LoadRecord();
    void ShowRule();
    void OpenChooser();
    void ChooserReported();
    void OpenEditor(int kind);
    void TakeRule(const PLMessage& message);
    void Save();

    _EventRecInfo mRecord;
    std::unique_ptr<VtCalendarRecurMainView> mChooser;
    std::map<int, std::unique_ptr<VtCalendarRecurEditorView>> mEditors;
    VtStaticText* mRuleText = nullptr;  // sub-panes
    VtStaticText* mLastText = nullptr;
    VtStaticText* mStartText = nullptr;
    VtStaticText* mSavedText = nullptr;
};
