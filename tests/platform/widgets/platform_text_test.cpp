// The platform's own texts: installing the platform resource file into the application context
// (missing, damaged and foreign files, once per context, again after a reset), the fallbacks, and
// what the date headers, the date dialog and the keyboard show with and without the file.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "IMEKeyboard.h"
#include "IMEManagerFactory.h"
#include "PLAppContext.h"
#include "PLDate.h"
#include "PLDeviceRoot.h"
#include "PLFont.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "VtBarFactory.h"
#include "VtDialogFactory.h"
#include "VtPlatformText.h"
#include "VtTheme.h"

namespace fs = std::filesystem;

namespace {

const std::string kCompiled = std::string(CAL_BINARY_DIR) + "/share/platform.rsc";

// Each case gets its own device root and a context without resource managers.
class PlatformText : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/platform-text-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        mRoot = pattern;
        PLDeviceRoot::SetRoot(mRoot);
        PLAppContext::ResetInstance();
    }
    void TearDown() override {
        PLAppContext::ResetInstance();
        PLDeviceRoot::SetRoot("");
        fs::remove_all(mRoot);
    }
    static std::string Target() { return PLDeviceRoot::Resolve(VtPlatformText::kDevicePath); }
    static void PlaceCompiled() {
        ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories(VtPlatformText::kDevicePath));
        fs::copy_file(kCompiled, Target(), fs::copy_options::overwrite_existing);
    }
    static void PlaceTexts(const std::map<uint32_t, std::string>& texts) {
        ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories(VtPlatformText::kDevicePath));
        PLResourceFileWriter writer;
        for (const auto& [id, text] : texts) {
            writer.AddText(id, text);
        }
        std::string error;
        ASSERT_TRUE(writer.Write(Target(), error)) << error;
    }
    static void PlaceBytes(const std::string& bytes) {
        ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories(VtPlatformText::kDevicePath));
        FILE* file = std::fopen(Target().c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    static std::string Header(long type, const PLDate& date, PLFont* font = nullptr) {
        PLDate shared = date;
        std::unique_ptr<VtCalendarYearSelectControl> header(
            MakeCalendarYearSelectControl(11104, type, &shared, nullptr, false));
        if (font != nullptr) {
            header->SetFont(font, false);
        }
        return header->TitleText().str();
    }

    std::string mRoot;
};

TEST_F(PlatformText, TheFileIsUsedOnlyWhenItHoldsThePlatformTexts) {
    struct Row {
        const char* name;
        std::function<void()> place;
        bool installs;
        const char* monthHeader;
    };
    const Row rows[] = {
        {"absent", [] {}, false, "2026-11"},
        {"damaged", [] { PlaceBytes("PLRS but not a resource file"); }, false, "2026-11"},
        {"empty", [] { PlaceBytes(""); }, false, "2026-11"},
        {"another_programs_texts",
         [] {
             PlaceTexts({{10032, "Month"}});
         },
         false, "2026-11"},
        {"compiled", [] { PlaceCompiled(); }, true, "November 2026"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLAppContext::ResetInstance();
        fs::remove(Target());
        row.place();
        EXPECT_EQ(VtPlatformText::Install(), row.installs);
        EXPECT_EQ(VtPlatformText::IsInstalled(), row.installs);
        EXPECT_EQ(Header(kVtHeaderMonth, PLDate(2026, 11, 21)), row.monthHeader);
        PLString foreign;
        EXPECT_FALSE(PLAppContext::GetInstance()->GetText(10032, foreign))
            << "a refused file is not registered";
    }
}

TEST_F(PlatformText, InstalledOncePerContextAndAgainAfterAReset) {
    PlaceTexts({{60000, "Janvier"}});
    ASSERT_TRUE(VtPlatformText::Install());
    PlaceTexts({{60000, "Enero"}});
    EXPECT_TRUE(VtPlatformText::Install());
    EXPECT_EQ(VtPlatformText::MonthName(1, false).str(), "Janvier") << "not loaded a second time";
    PLAppContext::ResetInstance();
    EXPECT_FALSE(VtPlatformText::IsInstalled());
    EXPECT_TRUE(VtPlatformText::Install());
    EXPECT_EQ(VtPlatformText::MonthName(1, false).str(), "Enero");
}

TEST_F(PlatformText, ApplicationResourcesAddedLaterDoNotHideThePlatformTexts) {
    PlaceCompiled();
    ASSERT_TRUE(VtPlatformText::Install());
    auto* application = new PLResourceFileManager(1, true);
    PLResourceFileWriter writer;
    writer.AddText(10032, "Month");
    std::string error;
    const std::string path = mRoot + "/app.rsc";
    ASSERT_TRUE(writer.Write(path, error)) << error;
    ASSERT_TRUE(application->LoadFromFile(path, false)) << application->GetLastError();
    PLAppContext::GetInstance()->AddResourceManager(application, true);
    EXPECT_EQ(VtPlatformText::MonthName(11, false).str(), "November");
    EXPECT_EQ(VtPlatformText::Get(10032).str(), "") << "not a platform id";
    EXPECT_EQ(Header(kVtHeaderMonth, PLDate(2026, 11, 21)), "November 2026");
}

// The built-in fallbacks say what the compiled file says, so a device without the file reads
// the same; and the file defines every id that has a fallback.
TEST_F(PlatformText, FallbacksMatchTheCompiledFile) {
    PLResourceFileManager compiled(2, true);
    ASSERT_TRUE(compiled.LoadFromFile(kCompiled, false)) << compiled.GetLastError();
    size_t texts = 0;
    for (const auto& [type, id] : compiled.ListResources()) {
        PLString text;
        ASSERT_TRUE(compiled.GetText(id, text));
        SCOPED_TRACE(id);
        EXPECT_GE(id, VtPlatformText::kFirstID);
        EXPECT_LE(id, VtPlatformText::kLastID);
        EXPECT_EQ(VtPlatformText::Fallback(id), text.str());
        ++texts;
    }
    for (uint32_t id = VtPlatformText::kFirstID; id <= VtPlatformText::kLastID; ++id) {
        PLString text;
        if (!VtPlatformText::Fallback(id).empty()) {
            EXPECT_TRUE(compiled.GetText(id, text)) << id << " has a fallback but no text";
        }
    }
    EXPECT_GT(texts, 50u);
}

TEST_F(PlatformText, TitleFormatsFillTheirFields) {
    struct Row {
        const char* name;
        const char* format;
        PLDate date;
        const char* title;
    };
    const Row rows[] = {
        {"month_and_year", "{month} {year}", PLDate(2026, 11, 21), "November 2026"},
        {"short_month", "{mon} {year}", PLDate(2030, 9, 1), "Sep 2030"},
        {"full_day", "{weekday} {day} {month} {year}", PLDate(1970, 1, 1),
         "Thursday 1 January 1970"},
        {"short_day", "{wday}, {day}. {mon}", PLDate(2026, 11, 21), "Sat, 21. Nov"},
        {"year_has_four_digits", "{year}", PLDate(5, 2, 3), "0005"},
        {"unknown_field_kept", "{era} {year}", PLDate(2026, 1, 1), "{era} 2026"},
        {"unclosed_brace_kept", "{day {year", PLDate(2026, 1, 2), "{day {year"},
        {"brace_then_field", "{{day}}", PLDate(2026, 1, 2), "{2}"},
        {"no_fields", "today", PLDate(2026, 1, 2), "today"},
        {"empty", "", PLDate(2026, 1, 2), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(VtPlatformText::FormatDate(row.format, row.date).str(), row.title);
    }
    EXPECT_EQ(VtPlatformText::MonthName(0, false).str(), "");
    EXPECT_EQ(VtPlatformText::MonthName(13, true).str(), "");
    EXPECT_EQ(VtPlatformText::WeekdayName(8, VtWeekdayForm::Full).str(), "");
}

TEST_F(PlatformText, DateHeadersShowTheLongestNamedTitleThatFits) {
    struct Row {
        const char* name;
        bool installed;
        long type;
        PLDate date;
        uint32_t font;
        const char* title;
    };
    const Row rows[] = {
        {"month", true, kVtHeaderMonth, PLDate(2026, 11, 21), PLFourCC("UC16"), "November 2026"},
        {"longest_month", true, kVtHeaderMonth, PLDate(2030, 9, 30), PLFourCC("UC16"),
         "September 2030"},
        {"month_in_the_large_font", true, kVtHeaderMonth, PLDate(2026, 11, 21), PLFourCC("UC24"),
         "Nov 2026"},
        {"day", true, kVtHeaderDay, PLDate(2026, 11, 21), PLFourCC("UC16"), "Sat 21 Nov 2026"},
        {"long_form_when_it_fits", true, kVtHeaderDay, PLDate(2026, 5, 1), PLFourCC("UC16"),
         "Friday 1 May 2026"},
        {"month_without_the_file", false, kVtHeaderMonth, PLDate(2026, 11, 21), PLFourCC("UC16"),
         "2026-11"},
        {"day_without_the_file", false, kVtHeaderDay, PLDate(2030, 12, 30), PLFourCC("UC16"),
         "2030-12-30"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLAppContext::ResetInstance();
        if (row.installed) {
            PlaceCompiled();
            ASSERT_TRUE(VtPlatformText::Install());
        }
        PLFont* font = PLFont::GetFont(row.font);
        const std::string title = Header(row.type, row.date, font);
        EXPECT_EQ(title, row.title);
        EXPECT_LE(font->MeasureText(title),
                  kPLScreenWidth - 2 * VtCalendarYearSelectControl::kArrowWidth)
            << "fits between the arrows";
    }
}

TEST_F(PlatformText, DateDialogNamesItsMonthAndWeekdaysInItsOrder) {
    struct Row {
        const char* name;
        bool installed;
        long firstWeekday;
        PLDate date;
        const char* header;
        const char* weekdays;
    };
    // Initials that differ from each other prove the order, which "S M T W T F S" cannot.
    const std::map<uint32_t, std::string> numbered = {
        {60000, "January"}, {60010, "November"}, {60060, "1"}, {60061, "2"}, {60062, "3"},
        {60063, "4"},       {60064, "5"},        {60065, "6"}, {60066, "7"}};
    const Row rows[] = {
        {"sunday_first", true, 1, PLDate(2026, 11, 21), "November 2026", "1234567"},
        {"monday_first", true, 2, PLDate(2026, 11, 21), "November 2026", "2345671"},
        {"saturday_first", true, 7, PLDate(2026, 1, 5), "January 2026", "7123456"},
        {"out_of_range_is_sunday", true, 0, PLDate(2026, 11, 21), "November 2026", "1234567"},
        {"without_the_file", false, 2, PLDate(2026, 11, 21), "2026-11", "MTWTFSS"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLAppContext::ResetInstance();
        fs::remove(Target());
        if (row.installed) {
            PlaceTexts(numbered);
            ASSERT_TRUE(VtPlatformText::Install());
        }
        std::unique_ptr<VtCalendarDateDialog> dialog(
            MakeVtCalendarDateDialog(PLPoint(266, 212), row.date, row.firstWeekday, 11004, "OK",
                                     11005, "Cancel", 0x3F3F3F3F, kEmptyString, 50008, nullptr));
        EXPECT_EQ(dialog->HeaderText().str(), row.header);
        std::string weekdays;
        for (int column = 0; column < 7; ++column) {
            weekdays += dialog->WeekdayLabel(column).str();
        }
        EXPECT_EQ(weekdays, row.weekdays);
        EXPECT_EQ(dialog->WeekdayLabel(7).str(), "");
    }
}

TEST_F(PlatformText, TheDateDialogShortensMonthsThatDoNotFit) {
    struct Row {
        const char* name;
        long fontScale;
        PLDate date;
        const char* header;
    };
    const Row rows[] = {
        {"longest_month", 0, PLDate(2026, 9, 1), "September 2026"},
        {"short_month", 0, PLDate(2026, 5, 1), "May 2026"},
        {"large_font_shortens", 1, PLDate(2026, 9, 1), "Sep 2026"},
        {"large_font_keeps_what_fits", 1, PLDate(2026, 5, 1), "May 2026"},
    };
    PlaceCompiled();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        InitVantorTheme(PLRGBColor(), row.fontScale, true, true, true, false);
        ASSERT_TRUE(VtPlatformText::IsInstalled()) << "the theme installs the platform texts";
        std::unique_ptr<VtCalendarDateDialog> dialog(
            MakeVtCalendarDateDialog(PLPoint(266, 212), row.date, 1, 11004, "OK", 11005, "Cancel",
                                     0x3F3F3F3F, kEmptyString, 50008, nullptr));
        EXPECT_EQ(dialog->HeaderText().str(), row.header);
    }
    InitVantorTheme(PLRGBColor(), 0, true, true, true, false);
}

TEST_F(PlatformText, KeyAndTimeLabelsComeFromTheFile) {
    struct Row {
        const char* name;
        bool installed;
        std::vector<std::string> specialLabels;  // in the keyboard's order
        const char* afternoon;                   // the time picker's PM column
    };
    const std::map<uint32_t, std::string> french = {
        {60000, "janvier"}, {60100, "espace"}, {60101, "effacer"}, {60102, "OK"},
        {60103, "?123"},    {60105, "maj"},    {60111, "ap."}};
    const Row rows[] = {
        {"from_the_file", true, {"maj", "effacer", "?123", "espace", "OK"}, "ap."},
        {"fallbacks", false, {"\xE2\x86\x91", "\xE2\x86\x90", "123", "space", "Done"}, "PM"},
    };
    std::unique_ptr<IMEManager> ime(IMEManagerFactory::createIMEManager());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLAppContext::ResetInstance();
        fs::remove(Target());
        if (row.installed) {
            PlaceTexts(french);
            ASSERT_TRUE(VtPlatformText::Install());
        }
        IMEKeyboard keyboard(*ime, false);
        std::vector<std::string> labels;
        for (const IMEKeyboard::Key& key : keyboard.GetKeys()) {
            if (key.action != IMEKeyboard::Key::Action::Type || key.input == " ") {
                labels.push_back(key.label);
            }
        }
        EXPECT_EQ(labels, row.specialLabels);
        std::unique_ptr<VtTimePickerDialog> picker(
            MakeVtTimePickerDialog(15, 0, 1, "Start", 0, "OK", 3, "Cancel", 0));
        EXPECT_EQ(picker->ColumnText(2).str(), row.afternoon);
        EXPECT_EQ(picker->GetSuffix().str(), "PM") << "what callers compare stays the same";
    }
}

}  // namespace
