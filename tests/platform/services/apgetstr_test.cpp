// Texts by id through the application context: found texts, the visible marker for gaps, one
// report per missing id, and the marker when no resources are registered at all.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLResourceFileManager.h"

namespace {

class APGetStrTest : public ::testing::Test {
protected:
    void SetUp() override {
        PLResourceFileWriter writer;
        writer.AddText(10032, "Month");
        writer.AddText(30592, "Su");
        std::string error;
        ASSERT_TRUE(writer.Write(mPath, error)) << error;
        auto manager = new PLResourceFileManager(10003, true);
        ASSERT_TRUE(manager->LoadFromFile(mPath, false)) << manager->GetLastError();
        PLAppContext::GetInstance()->AddResourceManager(manager, true);
    }
    void TearDown() override {
        PLAppContext::ResetInstance();
        std::remove(mPath.c_str());
    }
    const std::string mPath =
        ::testing::TempDir() + "apgetstr-" + std::to_string(::getpid()) + ".rsc";
};

TEST_F(APGetStrTest, GivesTheTextOrAVisibleMarkerReportedOnce) {
    const std::pair<uint32_t, const char*> rows[] = {
        {10032, "Month"}, {30592, "Su"}, {10042, "#10042"}, {0, "#0"}, {4294967295u, "#4294967295"},
    };
    ::testing::internal::CaptureStderr();
    for (int pass = 0; pass < 2; ++pass) {
        for (const auto& [id, expected] : rows) {
            EXPECT_EQ(APGetStr(id).str(), expected) << id;
        }
    }
    const std::string output = ::testing::internal::GetCapturedStderr();
    const size_t first = output.find("10042");
    ASSERT_NE(first, std::string::npos) << output;
    EXPECT_EQ(output.find("10042", first + 1), std::string::npos) << output;
    EXPECT_EQ(output.find("10032"), std::string::npos) << output;

    PLAppContext::ResetInstance();
    EXPECT_EQ(APGetStr(10032).str(), "#10032") << "no resources registered";
}

}  // namespace
