// The share sheet, drawn with the widget theme like every other dialog of the product: a title
// band, the file names on the field colour, and the bottom bar's centre and back buttons.
#include "VtShareSheet.h"

#include <sys/stat.h>

#include "APAtomicFile.h"
#include "PLDeviceRoot.h"
#include "PLDrawContext.h"
#include "PLMessage.h"
#include "VtButtonFactory.h"
#include "VtModalRunner.h"
#include "VtShare.h"
#include "VtTheme.h"

namespace {

constexpr int kTitleHeight = 29;
constexpr int kRowHeight = 24;
constexpr int kBarTop = 239;
constexpr uint8_t kKeyOk = 18;
constexpr uint8_t kKeyBack = 28;

std::string BaseName(const std::string& path) {
    size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool Exists(const std::string& hostPath) {
    struct stat info {};
    return ::stat(hostPath.c_str(), &info) == 0;
}

// "name.vcs", then "name_1.vcs", "name_2.vcs", ...: a file already in the outbox is never
// overwritten.
std::string FreeOutboxName(const std::string& name) {
    std::string folder = PLDeviceRoot::Resolve(kVtShareOutboxPath);
    size_t dot = name.find_last_of('.');
    std::string stem = dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
    std::string extension = stem.size() == name.size() ? "" : name.substr(dot);
    std::string candidate = folder + name;
    for (int n = 1; Exists(candidate); ++n) {
        candidate = folder + stem + "_" + std::to_string(n) + extension;
    }
    return candidate;
}

}  // namespace

VtShareSheet::VtShareSheet(std::vector<std::string> devicePaths)
    : PLView(kViewID, PLPoint{45, 0}, PLSize{275, 240}), mFiles(std::move(devicePaths)) {
    VtButton* save = MakeBmpBarButton(kSaveID, PLPoint{kBarTop, 43}, PLSize{36, 154}, nullptr,
                                      "Save to outbox", 1, false, false, nullptr);
    save->AddListener(this);
    AddSubPane(save, false);
    VtButton* cancel = MakeCSTBackButton(kCancelID, PLPoint{kBarTop, 197});
    cancel->AddListener(this);
    AddSubPane(cancel, false);
}

int VtShareSheet::Run() {
    mDone = false;
    mSave = false;
    if (!VtModalRunner::Run(*this, [this] { return mDone; })) {
        return 0;
    }
    return mSave ? SaveToOutbox() : 0;
}

int VtShareSheet::SaveToOutbox() const {
    if (!PLDeviceRoot::MakeParentDirectories(std::string(kVtShareOutboxPath) + "x")) {
        return 0;
    }
    int saved = 0;
    for (const std::string& path : mFiles) {
        std::string error;
        if (!BaseName(path).empty() &&
            APAtomicFile_Copy(PLDeviceRoot::Resolve(path), FreeOutboxName(BaseName(path)), error)) {
            ++saved;
        }
    }
    return saved;
}

void VtShareSheet::Listen(PLMessage* message) {
    if (message == nullptr || message->GetMessageID() != PLFourCC("ctrl")) {
        return;
    }
    if (message->GetSenderID() == kSaveID || message->GetSenderID() == kCancelID) {
        mSave = message->GetSenderID() == kSaveID;
        mDone = true;
    }
}

bool VtShareSheet::DoKeyCommand(char key, short, PLKeyModifiers) {
    uint8_t k = static_cast<uint8_t>(key);
    if (k != kKeyOk && k != kKeyBack) {
        return false;
    }
    mSave = k == kKeyOk;
    mDone = true;
    return true;
}

void VtShareSheet::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    PLRect bounds = GetBounds();
    theme.DrawViewBackground(context, *this);
    theme.DrawBand(context, PLRect{0, 0, kTitleHeight, bounds.right});
    theme.DrawText(context, "Share", PLRect{0, 0, kTitleHeight, bounds.right}, VtTheme::kWhite, 0,
                   theme.TextFont());
    PLRect list{kTitleHeight + 6, 6, kBarTop - 6, bounds.right - 6};
    theme.DrawFieldBox(context, list, false, true, 1);
    int top = list.top + 4;
    for (const std::string& path : mFiles) {
        if (top + kRowHeight > list.bottom - 4) {
            break;  // more files than rows: the count below still says how many
        }
        theme.DrawText(context, BaseName(path),
                       PLRect{top, list.left, top + kRowHeight, list.right}, theme.TextColor(), 1,
                       theme.TextFont());
        top += kRowHeight;
    }
    std::string count = std::to_string(mFiles.size()) + (mFiles.size() == 1 ? " file" : " files");
    theme.DrawText(context, count,
                   PLRect{list.bottom - kRowHeight, list.left, list.bottom, list.right},
                   theme.DisabledTextColor(), 2, theme.TextFont());
}
