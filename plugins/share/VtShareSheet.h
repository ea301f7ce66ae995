// The share sheet: a modal view listing the files to share, with "Save to outbox" and "Cancel" in
// the bottom bar. Saving copies the files into the device's outbox folder.
#pragma once

#include <string>
#include <vector>

#include "PLView.h"

class VtShareSheet : public PLView {
public:
    static constexpr uint32_t kViewID = 13000;
    static constexpr uint32_t kSaveID = 13001;
    static constexpr uint32_t kCancelID = 13002;

    explicit VtShareSheet(std::vector<std::string> devicePaths);

    // Runs the sheet in a nested event loop until a button is used. Returns the number of files
    // saved to the outbox, 0 when cancelled or when there is no screen to show it on.
    int Run();

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtShareSheet"; }

private:
    int SaveToOutbox() const;

    std::vector<std::string> mFiles;
    bool mDone = false;
    bool mSave = false;
};
