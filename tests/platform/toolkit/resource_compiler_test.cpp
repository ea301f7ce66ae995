// The resource compiler run as the build runs it: good sources compile, bad ones fail with the
// file and line of the problem and write nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <map>
#include <string>

#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "toolkit_support.h"

namespace {

namespace fs = std::filesystem;

class ResourceCompilerTest : public ::testing::Test {
protected:
    // Runs the compiler; returns its exit status (-1 when it did not exit) and its output.
    int Run(const std::string& arguments, std::string& output) {
        FILE* pipe = popen((CAL_BINARY_DIR "/bin/rsc " + arguments + " 2>&1").c_str(), "r");
        if (pipe == nullptr) {
            return -1;
        }
        char buffer[512];
        while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) {
            output.append(buffer, n);
        }
        const int status = pclose(pipe);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // Replaces the sources with `files` (name under src/ -> contents; "@png" is a real 2x1 PNG)
    // and compiles them into Output().
    int Compile(const std::map<std::string, std::string>& files, std::string& output) {
        fs::remove_all(Source());
        fs::create_directories(Source() + "/bitmaps");
        for (const auto& [name, contents] : files) {
            const std::string path = Source() + "/" + name;
            std::string error;
            if (contents != "@png") {
                std::ofstream(path, std::ios::binary) << contents;
            } else if (!PLBitmap(2, 1, {0xFF0066FF, 0x80CC0000}).SavePNG(path, error)) {
                ADD_FAILURE() << error;
            }
        }
        return Run(Source() + " " + Output(), output);
    }
    std::string Source() const { return mDir.Path() + "/src"; }
    std::string Output() const { return mDir.Path() + "/out.rsc"; }

    ScratchRoot mDir;
};

TEST_F(ResourceCompilerTest, CompilesTextsBitmapsAndFamilies) {
    std::string output;
    ASSERT_EQ(
        Compile({{"texts.txt", "# comment\n\n10032 Month\r\n10942 two\\nlines\\s\n11 a\\\\b \\t\n"},
                 {"bitmaps/10130.png", "@png"},
                 {"families.txt", "30371 10130 0 10130\n"},
                 {"required-ids.txt", "text 10032 10942\nbitm 10130\nbitf 30371\n"}},
                output),
        0)
        << output;
    PLResourceFileManager manager(1, true);
    ASSERT_TRUE(manager.LoadFromFile(Output(), false)) << manager.GetLastError();
    const std::pair<uint32_t, const char*> texts[] = {
        {10032, "Month"}, {10942, "two\nlines "}, {11, "a\\b \t"}};
    for (const auto& [id, expected] : texts) {
        PLBasicString<char> text;
        EXPECT_TRUE(manager.GetText(id, text));
        EXPECT_EQ(text.str(), expected);
    }
    auto bitmap =
        static_cast<const PLBitmap*>(manager.GetResource(kPLResBitmap, 10130, kPLWildcard));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->GetPixel(0, 0), 0xFF0066FFu);
    EXPECT_EQ(bitmap->GetPixel(1, 0) >> 24, 0x80u);
    EXPECT_NE(manager.GetResource(kPLResBitmapFamily, 30371, kPLWildcard), nullptr);

    // Command-line mistakes are usage errors.
    for (const char* arguments : {"", "only-one-argument", "--required", "--bogus a b", "a b c"}) {
        SCOPED_TRACE(arguments);
        output.clear();
        EXPECT_EQ(Run(arguments, output), 2) << output;
        EXPECT_NE(output.find("usage"), std::string::npos);
    }
}

TEST_F(ResourceCompilerTest, RefusesBadSourcesWithFileAndLine) {
    const std::pair<std::string, std::string> text = {"texts.txt", "1 a\n"},
                                              png = {"bitmaps/7.png", "@png"};
    // clang-format off
    struct Row {
        const char* name;
        std::map<std::string, std::string> files;
        const char* message;  // expected in the output
    } rows[] = {
        {"id without text", {{"texts.txt", "1 ok\n10032\n"}}, "texts.txt:2:"},
        {"id not a number", {{"texts.txt", "# c\nabc Month\n"}}, "texts.txt:2:"},
        {"id zero", {{"texts.txt", "0 Zero\n"}}, "texts.txt:1:"},
        {"id too large", {{"texts.txt", "4294967296 Big\n"}}, "texts.txt:1:"},
        {"duplicate text", {{"texts.txt", "5 a\n\n5 b\n"}}, "texts.txt:3: text 5 is already defined"},
        {"bad escape", {{"texts.txt", "5 a\\qb\n"}}, "unknown escape"},
        {"trailing backslash", {{"texts.txt", "5 ab\\\n"}}, "backslash ends"},
        {"invalid UTF-8", {{"texts.txt", "5 \xC3(\n"}}, "UTF-8"},
        {"missing texts.txt", {}, "texts.txt: cannot be read"},
        {"unreadable PNG", {text, {"bitmaps/7.png", "not a png"}}, "7.png: unreadable PNG"},
        {"PNG not named by id", {text, {"bitmaps/bell.png", "@png"}}, "named by its id"},
        {"family names missing bitmap", {text, png, {"families.txt", "# f\n9 7 8\n"}}, "families.txt:2: family 9 names bitmap 8"},
        {"family without bitmaps", {text, {"families.txt", "9\n"}}, "families.txt:1:"},
        {"family with zero normal", {text, png, {"families.txt", "9 0 7\n"}}, "normal bitmap"},
        {"duplicate family", {text, png, {"families.txt", "9 7\n9 7\n"}}, "families.txt:2: family 9 is already defined"},
        {"required text missing", {text, {"required-ids.txt", "text 1\ntext 1 10032\n"}}, "required-ids.txt:2: text 10032 is required"},
        {"required bitmap missing", {text, {"required-ids.txt", "bitm 1\n"}}, "bitm 1 is required"},
        {"required family missing", {text, {"required-ids.txt", "bitf 1\n"}}, "bitf 1 is required"},
        {"required unknown type", {text, {"required-ids.txt", "font 1\n"}}, "required-ids.txt:1: 'font'"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        fs::remove(Output());
        std::string output;
        EXPECT_EQ(Compile(row.files, output), 1) << output;
        EXPECT_NE(output.find(row.message), std::string::npos) << output;
        EXPECT_FALSE(fs::exists(Output())) << "nothing is written for bad sources";
    }
}

}  // namespace
