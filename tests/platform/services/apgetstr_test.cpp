// Texts by id through the application context: found texts, and the visible marker for gaps.
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
        mPath = ::testing::TempDir() + "apgetstr-" + std::to_string(::getpid()) + ".rsc";
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
    std::string mPath;
};

TEST_F(APGetStrTest, GivesTheTextOrAVisibleMarker) {
    struct Row {
        const char* name;
        uint32_t id;
        const char* expected;
    };
    const Row rows[] = {
        {"present", 10032, "Month"},
        {"another present", 30592, "Su"},
        {"missing", 10042, "#10042"},
        {"missing zero", 0, "#0"},
        {"missing largest", 4294967295u, "#4294967295"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(APGetStr(row.id).str(), row.expected);
    }
}

TEST_F(APGetStrTest, ReportsAMissingIdOnceOnly) {
    ::testing::internal::CaptureStderr();
    APGetStr(11111);
    APGetStr(11111);
    APGetStr(10032);
    std::string output = ::testing::internal::GetCapturedStderr();
    size_t first = output.find("11111");
    ASSERT_NE(first, std::string::npos) << output;
    EXPECT_EQ(output.find("11111", first + 1), std::string::npos) << output;
    EXPECT_EQ(output.find("10032"), std::string::npos) << output;
}

TEST(APGetStrWithoutResources, MarkerWhenNoManagerIsRegistered) {
    PLAppContext::ResetInstance();
    EXPECT_EQ(APGetStr(10032).str(), "#10032");
}

}  // namespace
