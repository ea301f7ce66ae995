// The entry points of the repeat screens' harness: theme, the calendar's resource file and the
// stand-in form on the root view.
#include "PLAppContext.h"
#include "PLAppModule.h"
#include "PLApplication.h"
#include "PLEventDispatcher.h"
#include "PLResourceFileManager.h"
#include "RecurHarnessForm.h"
#include "VtWidgets.h"

namespace {

class RecurHarnessApp : public PLApplication {
public:
    void Initialize() override {
        PLApplication::Initialize();
        InitVantorTheme(PLRGBColor(), 0, true, true, true, false);
        auto* manager = new PLResourceFileManager(1, true);
        manager->LoadFromFile("/root/resource/calendar.rsc", true);
        PLAppContext::GetInstance()->AddResourceManager(manager, true);
        mForm = std::make_unique<RecurHarnessForm>();
        GetRootView()->AddSubPane(mForm.get(), true);
    }
    ~RecurHarnessApp() override {
        if (mForm && mForm->GetParent() != nullptr) {
            mForm->GetParent()->RemoveSubPane(mForm.get());
        }
    }

private:
    std::unique_ptr<RecurHarnessForm> mForm;
};

}  // namespace

extern "C" int InitApplication(PLAppContext* context) {
    PLInstallApplication<RecurHarnessApp>(context);
    return 0;
}

extern "C" int CleanupApplication(const PLAppContext* context) {
    PLRemoveApplication(context);
    return 0;
}

extern "C" int GetApplicationName(PLBasicString<char>& name) {
    name = PLBasicString<char>("com.mdz.calendar.recur.harness");
    return 0;
}
