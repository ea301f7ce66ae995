// Edit fields and their inner editor: limits and filters on typing, the messages a field sends,
// non-editable and disabled fields, and the text the field reports.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLListener.h"
#include "PLMessage.h"
#include "VtTextFactory.h"

namespace {

class MessageLog : public PLListener {
public:
    void Listen(PLMessage* message) override {
        std::string kind;
        for (int shift = 24; shift >= 0; shift -= 8) {
            kind += char((message->GetMessageID() >> shift) & 0xFF);
        }
        const auto* state = dynamic_cast<const VtStateMessage*>(message);
        kinds.push_back(kind + (state != nullptr ? " " + std::to_string(state->GetState()) : ""));
    }
    std::vector<std::string> kinds;
};

std::unique_ptr<VtEditField> MakeField(const char* text, long limit, bool singleLine,
                                       long maxLines = 0) {
    return std::unique_ptr<VtEditField>(
        MakeVtEditField(11632, PLPoint(0, 0), PLSize(30, 120), text, singleLine, -1, maxLines, 1,
                        limit, kEmptyString, 1, 0, nullptr, true, kVtEditFieldRect, -1, true));
}

struct TypingCase {
    const char* name;
    const char* start;
    long limit;
    const char* accepted;  // empty: all
    bool editable;
    bool singleLine;
    long maxLines;
    const char* typed;
    const char* text;  // afterwards
    size_t changes;    // "MEMI" messages sent
};

class EditFieldTyping : public ::testing::TestWithParam<TypingCase> {};

TEST_P(EditFieldTyping, TypedTextKeepsTheFieldsRules) {
    const TypingCase& c = GetParam();
    auto field = MakeField(c.start, c.limit, c.singleLine, c.maxLines);
    field->GetEditor()->SetAcceptedChars(c.accepted);
    field->GetEditor()->SetEditable(c.editable);
    MessageLog log;
    field->AddListener(&log);
    field->GetEditor()->TypeText(c.typed);
    EXPECT_EQ(field->GetString().str(), c.text);
    EXPECT_EQ(field->GetEditor()->GetText(), c.text);
    EXPECT_EQ(log.kinds, std::vector<std::string>(c.changes, "MEMI 3"));
}

INSTANTIATE_TEST_SUITE_P(
    Typing, EditFieldTyping,
    ::testing::Values(
        TypingCase{"plain", "", 200, "", true, true, 0, "Dentist", "Dentist", 1},
        TypingCase{"two_digits_at_most", "", 2, "0123456789", true, true, 0, "123", "12", 1},
        TypingCase{"letters_refused_by_a_digit_field", "7", 2, "0123456789", true, true, 0, "ab",
                   "7", 0},
        TypingCase{"full_field_sends_nothing", "99", 2, "0123456789", true, true, 0, "1", "99", 0},
        TypingCase{"erase_then_type", "99", 2, "0123456789", true, true, 0, "\b5", "95", 1},
        TypingCase{"non_editable_ignores_typing", "01-12-2006", 10, "", false, true, 0, "x",
                   "01-12-2006", 0},
        TypingCase{"cjk_cut_whole", "", 4, "", true, true, 0, "\xE6\x97\xA5\xE6\x97\xA5",
                   "\xE6\x97\xA5", 1},
        TypingCase{"multi_line_keeps_breaks", "a", 600, "", true, false, 0, "\nb", "a\nb", 1},
        TypingCase{"line_count_limit_refuses_a_third_line", "a\nb", 600, "", true, false, 2, "\nc",
                   "a\nb", 0}),
    [](const ::testing::TestParamInfo<TypingCase>& info) { return std::string(info.param.name); });

TEST(EditField, PressSendsBothSpellingsAndProgramTextSendsNoChange) {
    auto field = MakeField("08:00", 10, true);
    MessageLog log;
    field->AddListener(&log);
    field->NotifyPressed();
    EXPECT_EQ(log.kinds, (std::vector<std::string>{"emup", "pume"}));
    log.kinds.clear();
    field->SetString("2026-11-21 and more", true);
    EXPECT_EQ(field->GetString().str(), "2026-11-21") << "cut to the limit";
    EXPECT_TRUE(log.kinds.empty()) << "text set by the program is not a user change";
}

TEST(EditField, ADisabledFieldTakesNoTypingAndAFieldWithoutPressNoticeStaysQuiet) {
    auto field = MakeField("a", 10, true);
    field->SetEnabled(false, false);
    EXPECT_FALSE(field->GetEditor()->TypeText("b"));
    EXPECT_EQ(field->GetString().str(), "a");

    std::unique_ptr<VtEditField> quiet(MakeVtEditField(1, PLPoint(0, 0), PLSize(30, 100), "", true,
                                                       0, 0, 1, 0, "Caption", -1, 60, nullptr, true,
                                                       kVtEditFieldRect, -1, false));
    MessageLog log;
    quiet->AddListener(&log);
    quiet->NotifyPressed();
    EXPECT_TRUE(log.kinds.empty());
    EXPECT_EQ(quiet->GetBoxRect(), PLRect(0, 60, 30, 100)) << "the caption takes its width";
}

}  // namespace
