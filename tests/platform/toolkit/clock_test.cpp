// The platform clock: pinning, moving, and parsing local times.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "PLClock.h"
#include "toolkit_support.h"

namespace {

class PLClockTest : public ::testing::Test {
protected:
    void TearDown() override { PLClock::Unpin(); }
};

TEST_F(PLClockTest, PinAdvanceUnpin) {
    PLClock::Pin(1'800'000'000'500);
    EXPECT_TRUE(PLClock::IsPinned());
    EXPECT_EQ(PLClock::NowMs(), 1'800'000'000'500);
    EXPECT_EQ(PLClock::Now(), 1'800'000'000);
    PLClock::Advance(1'600);
    EXPECT_EQ(PLClock::NowMs(), 1'800'000'002'100);
    EXPECT_EQ(PLClock::Now(), 1'800'000'002);
    PLClock::Pin(-1);  // just before the epoch reads as the second before it
    EXPECT_EQ(PLClock::Now(), -1);

    PLClock::Unpin();
    EXPECT_FALSE(PLClock::IsPinned());
    // Advancing a free clock pins it at the system time plus the step.
    const int64_t before = PLClock::NowMs();
    PLClock::Advance(3'600'000);
    EXPECT_TRUE(PLClock::IsPinned());
    EXPECT_GE(PLClock::NowMs(), before + 3'600'000);
    EXPECT_LT(PLClock::NowMs(), before + 3'660'000);
}

TEST_F(PLClockTest, ConcurrentAdvancesAreNotLost) {
    PLClock::Pin(0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 1000; ++i) {
                PLClock::Advance(1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(PLClock::NowMs(), 4000);
}

TEST_F(PLClockTest, ParseLocal) {
    struct Row {
        const char* name;
        const char* zone;
        const char* text;
        bool ok;
        long utc;  // expected seconds when ok
    } rows[] = {
        {"minutes only", "UTC", "2026-11-21 10:00", true, UtcSeconds(2026, 11, 21, 10, 0, 0)},
        {"with seconds", "UTC", "2026-11-21 10:00:59", true, UtcSeconds(2026, 11, 21, 10, 0, 59)},
        {"local in new york", "America/New_York", "2026-07-01 09:00", true,
         UtcSeconds(2026, 7, 1, 13)},
        {"local in shanghai", "Asia/Shanghai", "2030-12-31 23:59:59", true,
         UtcSeconds(2030, 12, 31, 15, 59, 59)},
        {"leap day", "UTC", "2024-02-29 00:00", true, UtcSeconds(2024, 2, 29)},
        {"no leap day in 2100", "UTC", "2100-02-29 00:00", false, 0},
        {"month 13", "UTC", "2026-13-01 00:00", false, 0},
        {"day 31 of april", "UTC", "2026-04-31 00:00", false, 0},
        {"hour 24", "UTC", "2026-11-21 24:00", false, 0},
        {"minute 60", "UTC", "2026-11-21 10:60", false, 0},
        {"second 60", "UTC", "2026-11-21 10:00:60", false, 0},
        {"missing time", "UTC", "2026-11-21", false, 0},
        {"one-digit hour", "UTC", "2026-11-21 9:00", false, 0},
        {"trailing text", "UTC", "2026-11-21 10:00 x", false, 0},
        {"dangling colon", "UTC", "2026-11-21 10:00:", false, 0},
        {"T separator", "UTC", "2026-11-21T10:00", false, 0},
        {"empty", "UTC", "", false, 0},
        {"year 0", "UTC", "0000-01-01 00:00", false, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScopedTZ zone(row.zone);
        int64_t ms = -12345;
        EXPECT_EQ(PLClock::ParseLocal(row.text, ms), row.ok);
        EXPECT_EQ(ms, row.ok ? int64_t(row.utc) * 1000 : -12345);
    }
    int64_t ms = 0;
    EXPECT_FALSE(PLClock::ParseLocal(nullptr, ms));
}

}  // namespace
