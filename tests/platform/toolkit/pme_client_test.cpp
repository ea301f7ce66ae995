// Messages between applications: the log line of each message and delivery by name.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <functional>

#include "PLClock.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "toolkit_support.h"

namespace {

class Counter : public PLListener {
public:
    void Listen(PLMessage* /*message*/) override {
        ++calls;
        if (action) {
            action();
        }
    }
    int calls = 0;
    std::function<void()> action;
};

std::vector<std::string> LogLines(const ScratchRoot& root) {
    std::ifstream in(root.Path() + PLPMEClient::LogPath());
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

class PLPMEClientTest : public ::testing::Test {
protected:
    void TearDown() override { PLClock::Unpin(); }
    ScratchRoot root;
    ScopedTZ zone{"Asia/Shanghai"};
};

TEST_F(PLPMEClientTest, LogLineContents) {
    PLClock::Pin(int64_t(UtcSeconds(2026, 11, 21, 2, 3, 4)) * 1000);
    const std::string stamp = std::to_string(UtcSeconds(2026, 11, 21, 2, 3, 4));
    const std::string head = "{\"time\":\"2026-11-21 10:03:04\",\"stamp\":" + stamp;
    const std::string fields = ",\"id\":1,\"sender\":2,\"value\":3,\"strings\":";
    const std::string fffd = "\xEF\xBF\xBD";
    // clang-format off
    struct Row {
        const char* name;
        PLMessage message;
        std::string line;
    } rows[] = {
        {"exit", PLMessage(5010, kPLWildcard, kPLWildcard, "Server", "com.mdz.calendar.v1"),
         head + ",\"id\":5010,\"sender\":1061109567,\"value\":1061109567,"
                "\"strings\":[\"Server\",\"com.mdz.calendar.v1\"]}"},
        {"escapes", PLMessage(1, 2, 3, "q\"b\\n\nt\t", PLString("\x01\x1f", 2)),
         head + fields + "[\"q\\\"b\\\\n\\nt\\t\",\"\\u0001\\u001f\"]}"},
        {"utf-8 kept", PLMessage(1, 2, 3, "\xE6\x97\xA5\xF0\x9F\x98\x80", ""),
         head + fields + "[\"\xE6\x97\xA5\xF0\x9F\x98\x80\",\"\"]}"},
        // A stray byte, a truncated sequence, an overlong form and a surrogate.
        {"invalid utf-8 replaced", PLMessage(1, 2, 3, "a\xFF" "b\xC3", "\xC0\xAF\xED\xA0\x80"),
         head + fields + "[\"a" + fffd + "b" + fffd + "\",\"" + fffd + fffd + fffd + fffd + fffd + "\"]}"},
    };
    // clang-format on
    for (Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(root.Path() + PLPMEClient::LogPath());
        PLPMEClient::GetInstance()->BroadcastMessage(&row.message);
        const std::vector<std::string> lines = LogLines(root);
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0], row.line);
    }
}

TEST_F(PLPMEClientTest, DeliveryByName) {
    PLPMEClient* client = PLPMEClient::GetInstance();
    Counter home, alert, both, other;
    client->RegisterListener("com.mdz.wpkhome.v1", &home);
    client->RegisterListener("com.mdz.wpkhome.v1", &home);  // once only
    client->RegisterListener("com.mdz.qnalert.v1", &alert);
    client->RegisterListener("com.mdz.wpkhome.v1", &both);
    client->RegisterListener("com.mdz.qnalert.v1", &both);
    client->RegisterListener("com.mdz.other", &other);
    struct Row {
        const char* name;
        const char* recipient;
        const char* sender;
        int home, alert, both, other;
    } rows[] = {
        {"to home", "com.mdz.wpkhome.v1", "x", 1, 0, 1, 0},
        {"to home and alert: each once", "com.mdz.wpkhome.v1", "com.mdz.qnalert.v1", 1, 1, 1, 0},
        {"by sender name", "nobody", "com.mdz.other", 0, 0, 0, 1},
        {"no names: everyone", "", "", 1, 1, 1, 1},
        {"unknown names: nobody", "a", "b", 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        home.calls = alert.calls = both.calls = other.calls = 0;
        PLMessage message(10040, kPLWildcard, 111, row.recipient, row.sender);
        client->BroadcastMessage(&message);
        EXPECT_EQ(home.calls, row.home);
        EXPECT_EQ(alert.calls, row.alert);
        EXPECT_EQ(both.calls, row.both);
        EXPECT_EQ(other.calls, row.other);
    }
    EXPECT_EQ(LogLines(root).size(), 5u);

    // A listener that unregisters another during delivery: the other is skipped.
    home.action = [&] { client->UnregisterListener(&both); };
    home.calls = both.calls = 0;
    PLMessage message(10040, 0, 0, "com.mdz.wpkhome.v1", "");
    client->BroadcastMessage(&message);
    EXPECT_EQ(home.calls, 1);
    EXPECT_EQ(both.calls, 0);
    for (Counter* listener : {&home, &alert, &both, &other}) {
        client->UnregisterListener(listener);
    }
}

TEST_F(PLPMEClientTest, UnwritableLogStillDelivers) {
    // A directory where the log file should be: writing fails, delivery goes on.
    std::filesystem::create_directories(root.Path() + PLPMEClient::LogPath());
    Counter listener;
    PLPMEClient::GetInstance()->RegisterListener("app", &listener);
    PLMessage message(1, 2, 3, "app", "");
    PLPMEClient::GetInstance()->BroadcastMessage(&message);
    PLPMEClient::GetInstance()->BroadcastMessage(&message);
    EXPECT_EQ(listener.calls, 2);
    EXPECT_TRUE(std::filesystem::is_directory(root.Path() + PLPMEClient::LogPath()));
    PLPMEClient::GetInstance()->UnregisterListener(&listener);
}

}  // namespace
