// The simulator's command line and where --app points.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLHostAppModule.h"
#include "PLHostOptions.h"

namespace {

struct OptionsRow {
    const char* name;
    std::vector<const char*> arguments;
    const char* error;  // null when the line is good
    PLHostOptions expected;
};

PLHostOptions Made(std::string root, std::string app, std::string script, bool headless,
                   bool hasNow, int64_t nowMs, int scale) {
    PLHostOptions options;
    options.root = std::move(root);
    options.app = std::move(app);
    options.script = std::move(script);
    options.headless = headless;
    options.hasNow = hasNow;
    options.nowMs = nowMs;
    options.scale = scale;
    return options;
}

const OptionsRow kRows[] = {
    {"Nothing", {}, nullptr, Made("", "", "", false, false, 0, 2)},
    {"Everything",
     {"--root", "/r", "--now", "2026-11-21 09:41", "--headless", "--script", "-", "--scale", "3",
      "--app", "gallery"},
     nullptr,
     Made("/r", "gallery", "-", true, true, 1795254060000, 3)},
    {"EqualsForm",
     {"--root=/r", "--scale=1", "--now=1970-01-01 00:00:01"},
     nullptr,
     Made("/r", "", "", false, true, 1000, 1)},
    {"LaterWins",
     {"--root", "/a", "--root", "/b"},
     nullptr,
     Made("/b", "", "", false, false, 0, 2)},
    {"UnknownOption", {"--colour"}, "unknown argument '--colour'", {}},
    {"StrayWord", {"script.txt"}, "unknown argument 'script.txt'", {}},
    {"MissingValue", {"--root"}, "--root needs a value", {}},
    {"OptionAsValue", {"--root", "--headless"}, "--root needs a value", {}},
    {"OptionAsValueInEqualsForm",
     {"--root=--headless"},
     nullptr,
     Made("--headless", "", "", false, false, 0, 2)},
    {"EmptyValue", {"--app="}, "--app needs a value", {}},
    {"ScaleZero", {"--scale", "0"}, "--scale takes a whole number from 1 to 8, not '0'", {}},
    {"ScaleWord", {"--scale", "big"}, "--scale takes a whole number", {}},
    {"ScaleTooLarge", {"--scale", "9"}, "--scale takes a whole number", {}},
    {"NowMalformed", {"--now", "21.11.2026"}, "--now takes \"YYYY-MM-DD HH:MM[:SS]\"", {}},
    {"NowOutOfRange", {"--now", "2026-11-21 09:60"}, "--now takes", {}},
};

TEST(HostOptions, ParsesTheCommandLine) {
    for (const OptionsRow& row : kRows) {
        SCOPED_TRACE(row.name);
        std::vector<const char*> argv{"calendar-sim"};
        argv.insert(argv.end(), row.arguments.begin(), row.arguments.end());
        PLHostOptions options;
        std::string error;
        bool parsed = PLHostOptions::Parse(int(argv.size()), argv.data(), options, error);
        if (row.error) {
            EXPECT_FALSE(parsed);
            EXPECT_NE(error.find(row.error), std::string::npos) << "got: " << error;
            continue;
        }
        ASSERT_TRUE(parsed) << error;
        EXPECT_EQ(options.root, row.expected.root);
        EXPECT_EQ(options.app, row.expected.app);
        EXPECT_EQ(options.script, row.expected.script);
        EXPECT_EQ(options.headless, row.expected.headless);
        EXPECT_EQ(options.hasNow, row.expected.hasNow);
        EXPECT_EQ(options.nowMs, row.expected.nowMs);
        EXPECT_EQ(options.scale, row.expected.scale);
    }
}

TEST(HostOptions, ResolvesTheApplicationModule) {
    struct Row {
        const char* name;
        const char* app;
        std::string expected;
    };
    // No calendar module in this made-up folder: the default falls back to the sample.
    const std::string apps = "/nowhere/apps";
    const Row rows[] = {
        {"DefaultWithoutCalendar", "", apps + "/sample.so"},
        {"BareName", "gallery", apps + "/gallery.so"},
        {"RelativePath", "build/apps/x.so", "build/apps/x.so"},
        {"FileName", "mine.so", "mine.so"},
        {"AbsolutePath", "/opt/app", "/opt/app"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLHostAppModule::ResolvePath(row.app, apps), row.expected);
    }
}

}  // namespace
