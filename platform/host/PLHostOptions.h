// The simulator's command line:
//
//   calendar-sim [--root DIR] [--now "YYYY-MM-DD HH:MM[:SS]"] [--headless] [--script FILE|-]
//                [--scale N] [--app PATH|NAME]
#pragma once

#include <cstdint>
#include <string>

struct PLHostOptions {
    std::string root;    // empty: the default device root
    std::string app;     // empty: the calendar when built, else the sample
    std::string script;  // empty: none; "-": standard input
    bool headless = false;
    bool hasNow = false;
    int64_t nowMs = 0;  // with hasNow: the pinned clock, epoch milliseconds
    int scale = 2;
    bool help = false;

    static constexpr int kMaxScale = 8;

    // False with a one-line reason for an unknown option, a missing or malformed value.
    static bool Parse(int argc, const char* const* argv, PLHostOptions& options,
                      std::string& error);
    static const char* Usage();
};
