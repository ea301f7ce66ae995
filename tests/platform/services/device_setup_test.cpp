// Device set-up on a temporary root with a temporary install layout named by CAL_INSTALL_DIR
// (calendar-ctl's tests cover the layout found beside the program): program files are copied and
// refreshed, data is never touched, and an unusable root or install layout is a clear failure.

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <tuple>

#include "APConfig.h"
#include "APDeviceSetup.h"
#include "PLDeviceRoot.h"
#include "store_support.h"

namespace {

class DeviceSetupTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        mInstall = Root() + "/install";  // goes with the root
        std::filesystem::create_directories(mInstall + "/share");
        std::filesystem::create_directories(mInstall + "/lib");
        WriteFile(mInstall + "/share/calendar.rsc", "resources v1");
        WriteFile(mInstall + "/lib/libVtShare_shareui.so", "library v1");
        const char* saved = std::getenv("CAL_INSTALL_DIR");
        mSaved = saved != nullptr ? saved : "";
        setenv("CAL_INSTALL_DIR", mInstall.c_str(), 1);
    }
    void TearDown() override {
        if (mSaved.empty()) {
            unsetenv("CAL_INSTALL_DIR");
        } else {
            setenv("CAL_INSTALL_DIR", mSaved.c_str(), 1);
        }
        StoreRootTest::TearDown();
    }
    void Populate() {
        std::string error;
        ASSERT_TRUE(APDeviceSetup_Populate(error)) << error;
    }
    std::string mInstall;
    std::string mSaved;
};

// The platform's resource file is refreshed like the calendar's, but a build without it still
// populates a device (the widgets have built-in texts) and keeps the copy the device has.
TEST_F(DeviceSetupTest, PopulatesARootThenRefreshesProgramFilesAndKeepsData) {
    const std::string platform = HostPath("/usr/share/platform/platform.rsc");
    Populate();
    EXPECT_FALSE(std::filesystem::exists(platform));
    EXPECT_EQ(ReadFile(HostPath("/root/resource/calendar.rsc")), "resources v1");
    EXPECT_EQ(ReadFile(HostPath("/usr/lib/libVtShare_shareui.so")), "library v1");
    EXPECT_TRUE(std::filesystem::is_directory(HostPath("/tmp/")));
    std::string error;
    ASSERT_TRUE(APConfig_SetByKey("lunar", "1", error)) << "defaults were written: " << error;
    const std::string settings = ReadFile(HostPath(kAPConfigDevicePath));
    PLDeviceRoot::MakeParentDirectories("/var/lib/calendar/events.db");
    WriteFile(HostPath("/var/lib/calendar/events.db"), "user events");
    WriteFile(HostPath("/tmp/17.vcs"), "an export");
    WriteFile(mInstall + "/share/calendar.rsc", "resources v2");
    WriteFile(mInstall + "/share/platform.rsc", "platform v1");

    Populate();
    EXPECT_EQ(ReadFile(platform), "platform v1");
    EXPECT_EQ(ReadFile(HostPath("/root/resource/calendar.rsc")), "resources v2");
    EXPECT_EQ(ReadFile(HostPath(kAPConfigDevicePath)), settings);
    EXPECT_EQ(ReadFile(HostPath("/var/lib/calendar/events.db")), "user events");
    EXPECT_EQ(ReadFile(HostPath("/tmp/17.vcs")), "an export");
    // A damaged settings file is left for the user to see, not replaced with defaults.
    WriteFile(HostPath(kAPConfigDevicePath), "damaged");
    std::filesystem::remove(mInstall + "/share/platform.rsc");
    Populate();
    EXPECT_EQ(ReadFile(HostPath(kAPConfigDevicePath)), "damaged");
    EXPECT_EQ(ReadFile(platform), "platform v1");
}

// An unusable root or install layout is named; a missing program file still lets the rest (the
// other files and the default settings) be set up.
TEST_F(DeviceSetupTest, FailuresSayWhatIsWrong) {
    const std::tuple<const char*, std::function<void()>, const char*, bool> rows[] = {
        {"root_below_a_file",
         [&] {
             WriteFile(Root() + "/plain-file", "x");
             PLDeviceRoot::SetRoot(Root() + "/plain-file/device");
         },
         "not writable", false},
        {"install_layout_without_resources",
         [&] {
             std::filesystem::remove(mInstall + "/share/calendar.rsc");
             PLDeviceRoot::SetRoot(Root() + "/second");
         },
         "calendar.rsc", true},
    };
    for (const auto& [name, arrange, says, restSetUp] : rows) {
        SCOPED_TRACE(name);
        arrange();
        std::string error;
        EXPECT_FALSE(APDeviceSetup_Populate(error));
        EXPECT_NE(error.find(says), std::string::npos) << error;
        APCONFIG_CALENDAR_S config;
        EXPECT_EQ(APConfigCalendar_Read(&config), restSetUp ? 1 : 0);
        EXPECT_EQ(ReadFile(HostPath("/usr/lib/libVtShare_shareui.so")),
                  restSetUp ? "library v1" : "");
        PLDeviceRoot::SetRoot(Root());
    }
}

}  // namespace
