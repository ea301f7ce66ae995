// The platform clock: the one source of "now" for every part of the platform and the application.
//
// By default it follows the system clock. The simulator pins it (--now) and moves it (wait, clock)
// so that tests see a fixed time; a pinned clock only moves when told to.
#pragma once

#include <cstdint>

class PLClock {
public:
    // Seconds since the epoch (UTC), and milliseconds for timers.
    static int64_t Now();
    static int64_t NowMs();

    // Pins the clock at a moment (milliseconds since the epoch).
    static void Pin(int64_t epochMs);
    // Moves a pinned clock forward; a system clock is pinned at its current reading first.
    static void Advance(int64_t ms);
    // Back to the system clock.
    static void Unpin();
    static bool IsPinned();

    // Parses "YYYY-MM-DD HH:MM[:SS]" as local time. Returns false on malformed input.
    static bool ParseLocal(const char* text, int64_t& epochMs);
};
