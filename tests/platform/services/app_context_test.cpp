// The services the running application reaches through its context: texts by id (the visible
// marker for gaps, reported once per id) and registration for messages addressed to it.

#include "APGetStr.h"
#include "APLaunch.h"
#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLResourceFileManager.h"
#include "store_support.h"

namespace {

class AppContextTest : public StoreRootTest {
protected:
    void TearDown() override {
        PLAppContext::ResetInstance();
        StoreRootTest::TearDown();
    }
};

TEST_F(AppContextTest, TextsOrAVisibleMarkerReportedOnce) {
    PLResourceFileWriter writer;
    writer.AddText(10032, "Month");
    writer.AddText(30592, "Su");
    std::string error;
    ASSERT_TRUE(writer.Write(Root() + "/texts.rsc", error)) << error;
    auto manager = new PLResourceFileManager(10003, true);
    ASSERT_TRUE(manager->LoadFromFile(Root() + "/texts.rsc", false)) << manager->GetLastError();
    PLAppContext::GetInstance()->AddResourceManager(manager, true);
    const std::pair<uint32_t, const char*> rows[] = {
        {10032, "Month"}, {30592, "Su"}, {10042, "#10042"}, {0, "#0"}, {4294967295u, "#4294967295"},
    };
    ::testing::internal::CaptureStderr();
    for (int pass = 0; pass < 2; ++pass) {
        for (const auto& [id, expected] : rows) {
            EXPECT_EQ(APGetStr(id).str(), expected) << id;
        }
    }
    const std::string output = ::testing::internal::GetCapturedStderr();
    const size_t first = output.find("10042");
    ASSERT_NE(first, std::string::npos) << output;
    EXPECT_EQ(output.find("10042", first + 1), std::string::npos) << output;
    EXPECT_EQ(output.find("10032"), std::string::npos) << output;
    PLAppContext::ResetInstance();
    EXPECT_EQ(APGetStr(10032).str(), "#10032") << "no resources registered";
}

// A message addressed to the running application reaches it once, however often it registered.
TEST_F(AppContextTest, MessagesAddressedToTheApplicationReachItOnce) {
    struct : PLListener {
        void Listen(PLMessage*) override { ++heard; }
        int heard = 0;
    } app;
    PLAppContext::GetInstance()->GetEventDispatcher().AddListener(&app);
    PLAppContext::GetInstance()->SetApplicationName("com.example.app");
    for (int registrations = 0; registrations <= 2; ++registrations) {
        if (registrations > 0) {
            RegisterForIPC_APLaunchAppMsg();
        }
        app.heard = 0;
        PLMessage message(5005, kPLWildcard, kPLWildcard, "com.example.app", "calendar-ctl");
        PLPMEClient::GetInstance()->BroadcastMessage(&message);
        EXPECT_EQ(app.heard, registrations > 0 ? 1 : 0) << registrations << " registrations";
    }
    PLAppContext::GetInstance()->GetEventDispatcher().RemoveListener(&app);
}

}  // namespace
