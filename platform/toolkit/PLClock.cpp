// The platform clock: the system clock, or a pinned moment that only moves when told to.
//
// The pinned moment lives in one atomic so that timers on other threads read a consistent value
// while the simulator moves it; kUnpinned marks "follow the system clock".
#include "PLClock.h"

#include <atomic>
#include <cctype>
#include <chrono>
#include <cstring>
#include <ctime>
#include <limits>

#include "PLDate.h"

namespace {

constexpr int64_t kUnpinned = std::numeric_limits<int64_t>::min();

std::atomic<int64_t>& PinnedMs() {
    static std::atomic<int64_t> pinned{kUnpinned};
    return pinned;
}

int64_t SystemMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// Reads exactly `count` decimal digits at `text`; false when any is missing.
bool ReadDigits(const char*& text, int count, int& value) {
    value = 0;
    for (int i = 0; i < count; ++i) {
        if (!std::isdigit(static_cast<unsigned char>(text[i]))) {
            return false;
        }
        value = value * 10 + (text[i] - '0');
    }
    text += count;
    return true;
}

bool Expect(const char*& text, char c) {
    if (*text != c) {
        return false;
    }
    ++text;
    return true;
}

}  // namespace

int64_t PLClock::NowMs() {
    const int64_t pinned = PinnedMs().load();
    return pinned == kUnpinned ? SystemMs() : pinned;
}

int64_t PLClock::Now() {
    const int64_t ms = NowMs();
    // Floor, so that a moment just before the epoch still reads as the second before it.
    return ms >= 0 ? ms / 1000 : -((-ms + 999) / 1000);
}

void PLClock::Pin(int64_t epochMs) {
    // The sentinel cannot be a real moment; one millisecond later is indistinguishable.
    PinnedMs().store(epochMs == kUnpinned ? epochMs + 1 : epochMs);
}

void PLClock::Advance(int64_t ms) {
    std::atomic<int64_t>& pinned = PinnedMs();
    int64_t current = pinned.load();
    int64_t next = 0;
    do {
        next = (current == kUnpinned ? SystemMs() : current) + ms;
        if (next == kUnpinned) {
            ++next;
        }
    } while (!pinned.compare_exchange_weak(current, next));
}

void PLClock::Unpin() {
    PinnedMs().store(kUnpinned);
}

bool PLClock::IsPinned() {
    return PinnedMs().load() != kUnpinned;
}

bool PLClock::ParseLocal(const char* text, int64_t& epochMs) {
    if (text == nullptr) {
        return false;
    }
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    const char* p = text;
    if (!ReadDigits(p, 4, year) || !Expect(p, '-') || !ReadDigits(p, 2, month) || !Expect(p, '-') ||
        !ReadDigits(p, 2, day) || !Expect(p, ' ') || !ReadDigits(p, 2, hour) || !Expect(p, ':') ||
        !ReadDigits(p, 2, minute)) {
        return false;
    }
    if (*p == ':' && !(++p, ReadDigits(p, 2, second))) {
        return false;
    }
    if (*p != '\0') {
        return false;
    }
    if (year < 1 || month < 1 || month > 12 || day < 1 ||
        day > PLDate::NumberOfDaysInMonth(month, year) || hour > 23 || minute > 59 || second > 59) {
        return false;
    }
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    const std::time_t moment = std::mktime(&fields);
    epochMs = int64_t(moment) * 1000;
    return true;
}
