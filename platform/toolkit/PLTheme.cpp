// The toolkit's plain theme and the manager that hands out whichever theme is installed.
#include "PLTheme.h"

#include <memory>

#include "PLDrawContext.h"
#include "PLPane.h"

namespace {

// The installed theme; empty means the plain theme below.
std::unique_ptr<PLTheme>& InstalledTheme() {
    static std::unique_ptr<PLTheme> installed;
    return installed;
}

PLTheme& PlainTheme() {
    static PLTheme plain;
    return plain;
}

}  // namespace

void PLTheme::DrawBmpBackground(PLDrawContext& context, const PLPane& pane) const {
    // The plain theme has no pictures: a flat ground in the background colour stands in.
    context.FillRect(pane.GetBounds(), GetBackgroundColor());
}

void PLTheme::DrawViewBackground(PLDrawContext& context, const PLPane& pane) const {
    context.FillRect(pane.GetBounds(), GetBackgroundColor());
}

PLTheme* PLThemeManager::GetCurrentTheme() {
    PLTheme* installed = InstalledTheme().get();
    return installed != nullptr ? installed : &PlainTheme();
}

void PLThemeManager::SetCurrentTheme(PLTheme* theme) {
    if (theme == InstalledTheme().get()) {
        return;
    }
    InstalledTheme().reset(theme);
}
