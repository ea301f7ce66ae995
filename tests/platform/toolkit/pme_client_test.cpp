// Messages between applications: the log line of each message and delivery by name.
#include <gtest/gtest.h>

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
    void Listen(PLMessage*) override {
        ++calls;
        if (action) {
            action();
        }
    }
    int calls = 0;
    std::function<void()> action;
};

class PLPMEClientTest : public ::testing::Test {
protected:
    void TearDown() override { PLClock::Unpin(); }
    std::string LogPath() const { return root.Path() + PLPMEClient::LogPath(); }
    std::vector<std::string> LogLines() const {
        std::ifstream in(LogPath());
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    ScratchRoot root;
    ScopedTZ zone{"Asia/Shanghai"};
    PLPMEClient* client = PLPMEClient::GetInstance();
};

TEST_F(PLPMEClientTest, LogLineContents) {
    const long stamp = UtcSeconds(2026, 11, 21, 2, 3, 4);
    PLClock::Pin(int64_t(stamp) * 1000);
    const std::string head =
        "{\"time\":\"2026-11-21 10:03:04\",\"stamp\":" + std::to_string(stamp) +
        ",\"id\":1,\"sender\":2,\"value\":3,\"strings\":";
    const std::string fffd = "\xEF\xBF\xBD";
    // clang-format off
    struct Row { const char* name; PLMessage message; std::string strings; };
    Row rows[] = {
        {"escapes", PLMessage(1, 2, 3, "q\"b\\n\nt\t", PLString("\x01\x1f", 2)),
         "[\"q\\\"b\\\\n\\nt\\t\",\"\\u0001\\u001f\"]}"},
        {"utf-8 kept", PLMessage(1, 2, 3, "\xE6\x97\xA5\xF0\x9F\x98\x80", ""),
         "[\"\xE6\x97\xA5\xF0\x9F\x98\x80\",\"\"]}"},
        // A stray byte, a truncated sequence, an overlong form and a surrogate.
        {"invalid utf-8 replaced", PLMessage(1, 2, 3, "a\xFF" "b\xC3", "\xC0\xAF\xED\xA0\x80"),
         "[\"a" + fffd + "b" + fffd + "\",\"" + fffd + fffd + fffd + fffd + fffd + "\"]}"},
    };
    // clang-format on
    for (Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(LogPath());
        client->BroadcastMessage(&row.message);
        EXPECT_EQ(LogLines(), std::vector<std::string>{head + row.strings});
    }
}

TEST_F(PLPMEClientTest, DeliveryByName) {
    Counter home, alert, both, other;
    const char* kHome = "com.mdz.wpkhome.v1";
    const char* kAlert = "com.mdz.qnalert.v1";
    client->RegisterListener(kHome, &home);
    client->RegisterListener(kHome, &home);  // once only
    client->RegisterListener(kAlert, &alert);
    client->RegisterListener(kHome, &both);
    client->RegisterListener(kAlert, &both);
    client->RegisterListener("com.mdz.other", &other);
    const std::tuple<const char*, const char*, const char*, int, int, int, int> rows[] = {
        {"to home", kHome, "x", 1, 0, 1, 0},
        {"to home and alert: each once", kHome, kAlert, 1, 1, 1, 0},
        {"by sender name", "nobody", "com.mdz.other", 0, 0, 0, 1},
        {"no names: everyone", "", "", 1, 1, 1, 1},
        {"unknown names: nobody", "a", "b", 0, 0, 0, 0},
    };
    for (const auto& [name, recipient, sender, toHome, toAlert, toBoth, toOther] : rows) {
        SCOPED_TRACE(name);
        home.calls = alert.calls = both.calls = other.calls = 0;
        PLMessage message(10040, kPLWildcard, 111, recipient, sender);
        client->BroadcastMessage(&message);
        EXPECT_EQ(std::vector<int>({home.calls, alert.calls, both.calls, other.calls}),
                  std::vector<int>({toHome, toAlert, toBoth, toOther}));
    }
    EXPECT_EQ(LogLines().size(), 5u);

    // A listener that unregisters another during delivery: the other is skipped.
    home.action = [&] { client->UnregisterListener(&both); };
    home.calls = both.calls = 0;
    PLMessage message(10040, 0, 0, kHome, "");
    client->BroadcastMessage(&message);
    EXPECT_EQ(home.calls, 1);
    EXPECT_EQ(both.calls, 0);

    // A directory where the log file should be: writing fails, delivery goes on.
    std::filesystem::remove(LogPath());
    std::filesystem::create_directories(LogPath());
    client->BroadcastMessage(&message);
    EXPECT_EQ(home.calls, 2);
    EXPECT_TRUE(std::filesystem::is_directory(LogPath()));
    for (Counter* listener : {&home, &alert, &both, &other}) {
        client->UnregisterListener(listener);
    }
}

}  // namespace
