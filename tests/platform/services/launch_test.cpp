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

using LaunchTest = StoreRootTest;

TEST_F(LaunchTest, MessagesReachTheApplicationOnlyWhenAddressedToIt) {
    struct Row {
        const char* name;
        const char* appName;
        int registrations;
        const char* recipient;
        size_t expected;
        bool resetAfterRegistering = false;
    };
    const Row rows[] = {
        {"addressed by recipient", "com.example.app", 1, "com.example.app", 1},
        {"registered twice still once", "com.example.app", 2, "com.example.app", 1},
        {"another application's message", "com.example.app", 1, "com.example.other", 0},
        {"not registered", "com.example.app", 0, "com.example.app", 0},
        {"no application name", "", 1, "com.example.app", 0},
        {"context reset ends the registration", "com.example.app", 1, "com.example.app", 0, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        RecordingListener app;
        PLAppContext::ResetInstance();
        PLAppContext::GetInstance()->SetApplicationName(row.appName);
        for (int i = 0; i < row.registrations; ++i) {
            RegisterForIPC_APLaunchAppMsg();
        }
        if (row.resetAfterRegistering) {
            PLAppContext::ResetInstance();
        }
        PLAppContext::GetInstance()->GetEventDispatcher().AddListener(&app);
        PLMessage message(5005, kPLWildcard, kPLWildcard, row.recipient, "calendar-ctl");
        PLPMEClient::GetInstance()->BroadcastMessage(&message);
        PLAppContext::GetInstance()->GetEventDispatcher().RemoveListener(&app);
        EXPECT_EQ(app.ids.size(), row.expected);
    }
    PLAppContext::ResetInstance();
}

}  // namespace
