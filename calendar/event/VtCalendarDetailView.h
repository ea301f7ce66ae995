// One stored event shown read-only: every field in words, scrolling when it does not fit, and an
// option menu to edit the event, export and share it, or delete it.
#pragma once

#include <cstdint>
#include <memory>

#include "APEventRecords.h"
#include "PLView.h"

class VtMenu;
class VtButton;
class VtScrollContainer;

constexpr uint32_t kDetailViewID = 12100;
constexpr uint32_t kDetailEditNotice = 12101;  // "ctrl": open the form on the shown event
constexpr uint32_t kDetailBack = 12102;        // "ctrl": back to the calling view
constexpr uint32_t kDetailDeleted = 12106;     // "ctrl": the shown event was deleted
constexpr uint32_t kDetailOptionsMenu = 12103;
constexpr uint32_t kDetailMenuEdit = 12104;
constexpr uint32_t kDetailMenuShare = 12105;
constexpr uint32_t kDetailMenuDelete = 12106;
constexpr uint32_t kDetailDeleteYes = 12108;
constexpr uint32_t kDetailDeleteNo = 12109;
constexpr uint32_t kDetailEditYes = 12110;
constexpr uint32_t kDetailEditNo = 12111;
constexpr uint32_t kDetailRows = 12119;     // the scrolling list of lines
constexpr uint32_t kDetailMissing = 12118;  // the notice shown for an event that is gone

class VtCalendarDetailView : public PLView {
public:
    // The view for `id` (12100) showing event `eventID`; the caller owns it until it is added.
    static VtCalendarDetailView* Make(uint32_t id, int32_t eventID);
    // Unloads the share library (its sheet may hold on to things until then).
    ~VtCalendarDetailView() override;

    // Reads the event and its alarm from the stores and lays the view out again. An id that names
    // no stored event shows a notice instead, with nothing to edit, share or delete.
    void LoadEvent(int32_t eventID);
    int32_t GetEventID() const { return mEventID; }
    bool HasEvent() const { return mLoaded; }
    const _EventRecInfo& GetRecord() const { return mRecord; }
    VtMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }

    // The three things the menu offers, also reachable without it.
    void Edit();
    // Writes the export file and opens the share sheet on it; returns the file's device path.
    PLBasicString<char> ExportAndShare();
    void Delete();
    // Leaves the view for the calling one.
    void Back();

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarDetailView"; }

protected:
    // The record is read again each time the view is shown, so an edit made meanwhile shows.
    void AttachedToParent() override;

private:
    explicit VtCalendarDetailView(uint32_t id);

    void BuildBar();
    void Rebuild();
    void OnMenu(uint32_t entry);
    // A two-button question; true when the first button closed it.
    bool Ask(uint32_t bitmapID, uint32_t textID, uint32_t yesID, uint32_t yesLabel, uint32_t noID);
    void Notify(uint32_t command);
    // The main view that is on screen below this one (day, week or month), or the parent.
    PLPane* CurrentView(PLPane* formerParent) const;

    int32_t mEventID = 0;
    bool mLoaded = false;
    _EventRecInfo mRecord{};
    _EventAlertInfo mAlert{};
    std::unique_ptr<VtMenu> mOptionsMenu;
    VtScrollContainer* mRows = nullptr;  // sub-pane
    VtButton* mEditButton = nullptr;     // sub-pane
};
