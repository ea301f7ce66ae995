// Edit fields and their inner editor: limits and filters on typing, the messages a field sends,
// non-editable and disabled fields, the text the field reports and the room its caption takes;
// taps on check boxes and radio buttons.
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
        values.push_back(long(message->GetUserMessageID()));
    }
    std::vector<std::string> kinds;
    std::vector<long> values;
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
}

struct CaptionCase {
    const char* name;
    const char* caption;
    long captionWidth;
    int boxLeft;
    int editorLeft;  // inside the box's border and margin, when there is room for them
};

class EditFieldCaption : public ::testing::TestWithParam<CaptionCase> {};

TEST_P(EditFieldCaption, TheCaptionTakesItsWidthOnlyWhenThereIsOne) {
    const CaptionCase& c = GetParam();
    std::unique_ptr<VtEditField> field(
        MakeVtEditField(11676, PLPoint(150, 95), PLSize(30, 110), "2026-11-21", true, -1, 0, 1, 10,
                        c.caption, -1, c.captionWidth, nullptr, true, kVtEditFieldRect, -1, true));
    EXPECT_EQ(field->GetBoxRect(), PLRect(0, c.boxLeft, 30, 110));
    EXPECT_EQ(field->GetEditor()->GetLocation().h, c.editorLeft);
}

INSTANTIATE_TEST_SUITE_P(
    Captions, EditFieldCaption,
    ::testing::Values(CaptionCase{"caption_of_sixty", "Every", 60, 60, 66},
                      CaptionCase{"empty_caption_of_sixty_five_takes_nothing", "", 65, 0, 6},
                      CaptionCase{"no_width_no_caption", "Every", 0, 0, 6},
                      CaptionCase{"wider_than_the_field_stops_at_its_edge", "Every", 500, 110, 110},
                      CaptionCase{"negative_width_is_none", "Every", -5, 0, 6}),
    [](const ::testing::TestParamInfo<CaptionCase>& info) { return std::string(info.param.name); });

struct TapCase {
    const char* name;
    bool radio;
    bool on;
    bool enabled;
    PLPoint release;  // where the pen comes up after going down at (10, 10)
    long after;
    std::vector<std::string> sent;
};

class ToggleTaps : public ::testing::TestWithParam<TapCase> {};

TEST_P(ToggleTaps, ACompletedTapSetsTheStateAndReportsIt) {
    const TapCase& c = GetParam();
    std::unique_ptr<VtToggleButton> button;
    if (c.radio) {
        button.reset(MakeRadioButton(11636, PLPoint(90, 5), PLSize(30, 235), "Never", c.on, nullptr,
                                     nullptr));
    } else {
        button.reset(
            MakeCheckbox(11461, PLPoint(0, 0), PLSize(30, 200), "Lunar", c.on, nullptr, nullptr));
    }
    button->SetEnabled(c.enabled, false);
    MessageLog log;
    button->AddListener(&log);
    button->MouseDown(PLPoint(10, 10), kPLPen);
    button->MouseUp(c.release, kPLPen);
    EXPECT_EQ(button->GetOnState(), c.after);
    EXPECT_EQ(log.kinds, c.sent);
    if (!c.sent.empty()) {
        EXPECT_EQ(log.values.back(), c.after) << "the message carries the new state";
    }
    EXPECT_FALSE(button->IsPressed());
}

INSTANTIATE_TEST_SUITE_P(
    Taps, ToggleTaps,
    ::testing::Values(TapCase{"check_box_turns_on", false, false, true, {10, 10}, 1, {"ctrl"}},
                      TapCase{"check_box_turns_off", false, true, true, {10, 10}, 0, {"ctrl"}},
                      TapCase{"radio_turns_on", true, false, true, {10, 10}, 1, {"ctrl"}},
                      TapCase{"radio_stays_on", true, true, true, {10, 10}, 1, {"ctrl"}},
                      TapCase{
                          "released_outside_changes_nothing", false, false, true, {40, 10}, 0, {}},
                      TapCase{"disabled_changes_nothing", true, false, false, {10, 10}, 0, {}}),
    [](const ::testing::TestParamInfo<TapCase>& info) { return std::string(info.param.name); });

}  // namespace
