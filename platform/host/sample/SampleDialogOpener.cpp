// The sample's modal dialog: a nested event loop fed by the same source as the main one.
#include "SampleDialogOpener.h"

#include <memory>

#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLEventLoop.h"
#include "PLView.h"
#include "SampleButton.h"

SampleDialogOpener::SampleDialogOpener(uint32_t id, PLPoint location, PLSize size)
    : SampleBox(id, location, size, PLRGBColor(120, 70, 150), "Dialog") {}

void SampleDialogOpener::MouseUp(PLPoint where, PLMouseButton) {
    if (!mOpen && GetBounds().Contains(where)) {
        RunDialog();
    }
}

void SampleDialogOpener::RunDialog() {
    PLAppContext* context = PLAppContext::GetInstance();
    PLView* root = context->GetApplication()->GetRootView();
    auto* dialog = new SampleBox(kDialogID, PLPoint(120, 30), PLSize(120, 180),
                                 PLRGBColor(250, 245, 225), "Modal");
    auto* close = new SampleButton(kCloseID, PLPoint(76, 40), PLSize(36, 100), "Close");
    bool closed = false;
    close->SetAction([&closed] { closed = true; });
    dialog->AddSubPane(close, false);
    root->AddSubPane(dialog, true);
    mOpen = true;
    context->GetEventLoop().RunNested([&closed] { return closed; });
    mOpen = false;
    // The loop may have ended for another reason (the application is exiting): the dialog goes
    // either way, and only a real close counts.
    if (root->RemoveSubPane(dialog)) {
        std::unique_ptr<SampleBox> owned(dialog);
        root->Redraw();
    }
    if (closed) {
        ++mClosedCount;
        SetString("Closed " + std::to_string(mClosedCount));
    }
}
