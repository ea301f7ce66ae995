// A pane that, when tapped, shows a modal dialog and runs a nested event loop until the dialog's
// Close button is tapped; then it counts the closed dialogs in its text.
#pragma once

#include "SampleBox.h"

class SampleDialogOpener : public SampleBox {
public:
    static constexpr uint32_t kDialogID = 500;
    static constexpr uint32_t kCloseID = 501;

    SampleDialogOpener(uint32_t id, PLPoint location, PLSize size);

    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "SampleDialogOpener"; }

private:
    void RunDialog();

    int mClosedCount = 0;
    bool mOpen = false;
};
