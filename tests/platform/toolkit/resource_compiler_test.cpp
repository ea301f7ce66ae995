// The resource compiler run as the build runs it: good sources compile, bad ones fail with the
// file and line of the problem and write nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "PLBitmap.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"

namespace {

namespace fs = std::filesystem;

struct RunResult {
    int status;
    std::string output;
};

RunResult RunCompiler(const std::string& arguments) {
    std::string command = CAL_BINARY_DIR "/bin/rsc " + arguments + " 2>&1";
    RunResult result{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[512];
    while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) {
        result.output.append(buffer, n);
    }
    int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

class ResourceCompilerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(fs::exists(CAL_BINARY_DIR "/bin/rsc")) << "build the rsc target";
        mDir = fs::temp_directory_path() /
               ("rsc-compiler-" + std::to_string(::getpid()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(mDir);
        fs::create_directories(mDir / "src" / "bitmaps");
    }
    void TearDown() override { fs::remove_all(mDir); }

    // Writes the sources: file name relative to src/ -> contents. "@png" writes a real 2x1 PNG.
    void WriteSources(const std::map<std::string, std::string>& files) {
        for (const auto& [name, contents] : files) {
            fs::path path = mDir / "src" / name;
            if (contents == "@png") {
                PLBitmap bitmap(2, 1, {0xFF0066FF, 0x80CC0000});
                std::string error;
                ASSERT_TRUE(bitmap.SavePNG(path.string(), error)) << error;
            } else {
                std::ofstream(path, std::ios::binary) << contents;
            }
        }
    }
    std::string Source() const { return (mDir / "src").string(); }
    std::string Output() const { return (mDir / "out.rsc").string(); }

    fs::path mDir;
};

TEST_F(ResourceCompilerTest, CompilesTextsBitmapsAndFamilies) {
    WriteSources({
        {"texts.txt", "# comment\n\n10032 Month\r\n10942 two\\nlines\\s\n11 a\\\\b \\t\n"},
        {"bitmaps/10130.png", "@png"},
        {"families.txt", "30371 10130 0 10130\n"},
        {"required-ids.txt", "text 10032 10942\nbitm 10130\nbitf 30371\n"},
    });
    RunResult run = RunCompiler(Source() + " " + Output());
    ASSERT_EQ(run.status, 0) << run.output;

    PLResourceFileManager manager(1, true);
    ASSERT_TRUE(manager.LoadFromFile(Output(), false)) << manager.GetLastError();
    struct Row {
        uint32_t id;
        const char* text;
    };
    const Row rows[] = {{10032, "Month"}, {10942, "two\nlines "}, {11, "a\\b \t"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.id);
        PLBasicString<char> text;
        ASSERT_TRUE(manager.GetText(row.id, text));
        EXPECT_EQ(text.str(), row.text);
    }
    auto bitmap =
        static_cast<const PLBitmap*>(manager.GetResource(kPLResBitmap, 10130, kPLWildcard));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->GetPixel(0, 0), 0xFF0066FFu);
    EXPECT_EQ(bitmap->GetPixel(1, 0) >> 24, 0x80u);
    EXPECT_NE(manager.GetResource(kPLResBitmapFamily, 30371, kPLWildcard), nullptr);
}

TEST_F(ResourceCompilerTest, RefusesBadSourcesWithFileAndLine) {
    struct Row {
        const char* name;
        std::map<std::string, std::string> files;
        const char* message;  // expected in the output
    };
    // clang-format off
    const Row rows[] = {
        {"id without text", {{"texts.txt", "1 ok\n10032\n"}}, "texts.txt:2:"},
        {"id not a number", {{"texts.txt", "# c\nabc Month\n"}}, "texts.txt:2:"},
        {"id zero", {{"texts.txt", "0 Zero\n"}}, "texts.txt:1:"},
        {"id too large", {{"texts.txt", "4294967296 Big\n"}}, "texts.txt:1:"},
        {"duplicate text",
         {{"texts.txt", "5 a\n\n5 b\n"}}, "texts.txt:3: text 5 is already defined"},
        {"bad escape", {{"texts.txt", "5 a\\qb\n"}}, "unknown escape"},
        {"trailing backslash", {{"texts.txt", "5 ab\\\n"}}, "backslash ends"},
        {"invalid UTF-8", {{"texts.txt", "5 \xC3(\n"}}, "UTF-8"},
        {"missing texts.txt", {}, "texts.txt: cannot be read"},
        {"unreadable PNG",
         {{"texts.txt", "1 a\n"}, {"bitmaps/7.png", "not a png"}}, "7.png: unreadable PNG"},
        {"PNG not named by id",
         {{"texts.txt", "1 a\n"}, {"bitmaps/bell.png", "@png"}}, "named by its id"},
        {"family names missing bitmap",
         {{"texts.txt", "1 a\n"}, {"bitmaps/7.png", "@png"}, {"families.txt", "# f\n9 7 8\n"}},
         "families.txt:2: family 9 names bitmap 8"},
        {"family without bitmaps",
         {{"texts.txt", "1 a\n"}, {"families.txt", "9\n"}}, "families.txt:1:"},
        {"family with zero normal",
         {{"texts.txt", "1 a\n"}, {"bitmaps/7.png", "@png"}, {"families.txt", "9 0 7\n"}},
         "normal bitmap"},
        {"duplicate family",
         {{"texts.txt", "1 a\n"}, {"bitmaps/7.png", "@png"}, {"families.txt", "9 7\n9 7\n"}},
         "families.txt:2: family 9 is already defined"},
        {"required text missing",
         {{"texts.txt", "1 a\n"}, {"required-ids.txt", "text 1\ntext 1 10032\n"}},
         "required-ids.txt:2: text 10032 is required"},
        {"required bitmap missing",
         {{"texts.txt", "1 a\n"}, {"required-ids.txt", "bitm 1\n"}}, "bitm 1 is required"},
        {"required family missing",
         {{"texts.txt", "1 a\n"}, {"required-ids.txt", "bitf 1\n"}}, "bitf 1 is required"},
        {"required unknown type",
         {{"texts.txt", "1 a\n"}, {"required-ids.txt", "font 1\n"}}, "required-ids.txt:1: 'font'"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        fs::remove_all(mDir / "src");
        fs::create_directories(mDir / "src" / "bitmaps");
        fs::remove(Output());
        WriteSources(row.files);
        RunResult run = RunCompiler(Source() + " " + Output());
        EXPECT_EQ(run.status, 1) << run.output;
        EXPECT_NE(run.output.find(row.message), std::string::npos) << run.output;
        EXPECT_FALSE(fs::exists(Output())) << "nothing is written for bad sources";
    }
}

TEST_F(ResourceCompilerTest, CommandLineMistakesAreUsageErrors) {
    const char* rows[] = {"", "only-one-argument", "--required", "--bogus a b", "a b c"};
    for (const char* arguments : rows) {
        SCOPED_TRACE(arguments);
        RunResult run = RunCompiler(arguments);
        EXPECT_EQ(run.status, 2) << run.output;
        EXPECT_NE(run.output.find("usage"), std::string::npos);
    }
}

}  // namespace
