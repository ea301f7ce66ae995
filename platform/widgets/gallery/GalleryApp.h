// The gallery application: one screen per family of widgets, a shared bottom bar (screen menu,
// next screen, exit) and a log line that shows the last message a widget sent.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "GalleryArt.h"
#include "PLApplication.h"
#include "PLBasicString.h"

class GalleryScreen;
class IMEManager;
class PLMenu;
class VtMenu;
class VtStaticText;

// Ids of the gallery's shared panes.
constexpr uint32_t kGalleryLogID = 990;
constexpr uint32_t kGalleryScreenMenuButton = 991;
constexpr uint32_t kGalleryNextButton = 992;
constexpr uint32_t kGalleryExitButton = 993;
constexpr uint32_t kGalleryScreenMenu = 995;

class GalleryApp : public PLApplication {
public:
    GalleryApp();
    ~GalleryApp() override;

    void Initialize() override;
    void Listen(PLMessage* message) override;

    // Shows a line on the log (id 990).
    void Log(const std::string& line);
    void ShowScreen(uint32_t id);
    GalleryScreen* CurrentScreen() const;

    GalleryArt& Art() { return mArt; }
    // Things the pages make that no pane owns; the application keeps them.
    PLMenu* Keep(PLMenu* menu);
    IMEManager* Keep(IMEManager* manager);

private:
    GalleryScreen* AddScreen(uint32_t id, const char* title, void (*build)(GalleryScreen&));
    void BuildBottomBar();

    GalleryArt mArt;
    std::vector<GalleryScreen*> mScreens;  // owned by the root view
    std::vector<std::unique_ptr<PLMenu>> mMenus;
    std::vector<std::unique_ptr<IMEManager>> mIMEs;
    VtMenu* mScreenMenu = nullptr;  // kept in mMenus
    VtStaticText* mLog = nullptr;   // owned by the root view
    size_t mCurrent = 0;
};
