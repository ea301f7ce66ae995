// Registration for messages addressed to the running application.
#include <gtest/gtest.h>

#include <vector>

#include "APLaunch.h"
#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "store_support.h"

namespace {

class RecordingListener : public PLListener {
public:
    void Listen(PLMessage* message) override { ids.push_back(message->GetMessageID()); }
    std::vector<uint32_t> ids;
};

class LaunchTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        PLAppContext::GetInstance()->GetEventDispatcher().AddListener(&mApp);
    }
    void TearDown() override {
        PLAppContext::GetInstance()->GetEventDispatcher().RemoveListener(&mApp);
        PLAppContext::ResetInstance();
        StoreRootTest::TearDown();
    }
    void Broadcast(uint32_t id, const char* recipient, const char* sender) {
        PLMessage message(id, kPLWildcard, kPLWildcard, recipient, sender);
        PLPMEClient::GetInstance()->BroadcastMessage(&message);
    }
    RecordingListener mApp;
};

TEST_F(LaunchTest, MessagesReachTheApplicationOnlyWhenAddressedToIt) {
    struct Row {
        const char* name;
        const char* appName;
        int registrations;
        const char* recipient;
        size_t expected;
    };
    const Row rows[] = {
        {"addressed by recipient", "com.example.app", 1, "com.example.app", 1},
        {"registered twice still once", "com.example.app", 2, "com.example.app", 1},
        {"another application's message", "com.example.app", 1, "com.example.other", 0},
        {"not registered", "com.example.app", 0, "com.example.app", 0},
        {"no application name", "", 1, "com.example.app", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLAppContext::ResetInstance();
        mApp.ids.clear();
        PLAppContext::GetInstance()->SetApplicationName(row.appName);
        for (int i = 0; i < row.registrations; ++i) {
            RegisterForIPC_APLaunchAppMsg();
        }
        Broadcast(5005, row.recipient, "calendar-ctl");
        EXPECT_EQ(mApp.ids.size(), row.expected);
    }
}

TEST_F(LaunchTest, ResettingTheContextEndsTheRegistration) {
    PLAppContext::GetInstance()->SetApplicationName("com.example.app");
    RegisterForIPC_APLaunchAppMsg();
    PLAppContext::ResetInstance();
    Broadcast(10041, "com.example.app", "calendar-ctl");
    EXPECT_TRUE(mApp.ids.empty());
}

}  // namespace
