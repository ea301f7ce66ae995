// Pane dumps: the JSON of a small tree, string escaping, and the lookups behind expect.
#include <gtest/gtest.h>

#include <string>

#include "PLHostPaneDump.h"
#include "PLPane.h"

namespace {

// A pane with extra dump members, as a list with checked rows has.
class RowsPane : public PLPane {
public:
    RowsPane() : PLPane(30, PLPoint(2, 3), PLSize(10, 20)) {}
    const char* GetClassName() const override { return "RowsPane"; }
    std::string DumpExtra() const override { return "\"checked\": [1, 3]"; }
};

TEST(PaneDump, WritesTheTree) {
    PLPane root(1, PLPoint(0, 0), PLSize(320, 240));
    auto* view = new PLPane(2, PLPoint(45, 0), PLSize(275, 240));
    auto* rows = new RowsPane();
    view->AddSubPane(rows, false);
    root.AddSubPane(view, false);
    view->SetString(PLBasicString<char>("Say \"hi\""), false);
    view->SetOnState(1, false);
    rows->SetEnabled(false, false);
    view->Hide(false);

    const std::string expected =
        "{\"id\": 1, \"class\": \"PLPane\", \"rect\": [0, 0, 320, 240], \"shown\": true, "
        "\"visible\": true, \"enabled\": true, \"text\": \"\", \"on\": 0, \"children\": [\n"
        "  {\"id\": 2, \"class\": \"PLPane\", \"rect\": [45, 0, 320, 240], \"shown\": false, "
        "\"visible\": false, \"enabled\": true, \"text\": \"Say \\\"hi\\\"\", \"on\": 1, "
        "\"children\": [\n"
        "    {\"id\": 30, \"class\": \"RowsPane\", \"rect\": [47, 3, 57, 23], \"shown\": true, "
        "\"visible\": false, \"enabled\": false, \"text\": \"\", \"on\": 0, \"checked\": [1, 3], "
        "\"children\": []}\n"
        "  ]}\n"
        "]}\n";
    EXPECT_EQ(PLHostPaneDump::ToJSON(&root), expected);
    EXPECT_EQ(PLHostPaneDump::ToJSON(nullptr), "null\n");
}

struct StringRow {
    const char* name;
    std::string text;
    std::string json;
};

const StringRow kStrings[] = {
    {"Plain", "Key 18", "\"Key 18\""},
    {"QuoteAndBackslash", "a\"b\\c", "\"a\\\"b\\\\c\""},
    {"LineBreaks", "a\nb\tc\rd", "\"a\\nb\\tc\\rd\""},
    {"ControlCharacters", std::string("\x01\x1f\x7f", 3), "\"\\u0001\\u001f\\u007f\""},
    {"Nul", std::string("a\0b", 3), "\"a\\u0000b\""},
    {"Utf8KeptAsIs", "wörld 日本 \xF0\x9F\x98\x80", "\"wörld 日本 \xF0\x9F\x98\x80\""},
    {"LoneLeadByte", "a\xC3", "\"a\xEF\xBF\xBD\""},
    {"InvalidByte", "\xFF", "\"\xEF\xBF\xBD\""},
    {"Overlong", "\xC0\xAF", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},
    {"Surrogate", "\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
    {"PastUnicode", "\xF4\x90\x80\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
    {"CutFourByte", "\xF0\x9F\x98", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
};

TEST(PaneDump, EscapesStrings) {
    for (const StringRow& row : kStrings) {
        SCOPED_TRACE(row.name);
        std::string out;
        PLHostPaneDump::AppendString(out, row.text);
        EXPECT_EQ(out, row.json);
    }
}

TEST(PaneDump, FindsVisibleAndHiddenPanes) {
    PLPane root(1, PLPoint(0, 0), PLSize(320, 240));
    auto* hiddenParent = new PLPane(2, PLPoint(0, 0), PLSize(10, 10));
    auto* underHidden = new PLPane(7, PLPoint(0, 0), PLSize(5, 5));
    auto* shown = new PLPane(7, PLPoint(20, 0), PLSize(5, 5));
    auto* hiddenLeaf = new PLPane(8, PLPoint(30, 0), PLSize(5, 5));
    hiddenParent->AddSubPane(underHidden, false);
    root.AddSubPane(hiddenParent, false);
    root.AddSubPane(shown, false);
    root.AddSubPane(hiddenLeaf, false);
    hiddenParent->Hide(false);
    hiddenLeaf->Hide(false);

    struct Row {
        const char* name;
        uint32_t id;
        PLPane* visible;
        PLPane* any;
    };
    const Row rows[] = {
        {"RootItself", 1, &root, &root},        {"FirstVisibleOfTwo", 7, shown, underHidden},
        {"HiddenLeaf", 8, nullptr, hiddenLeaf}, {"HiddenParent", 2, nullptr, hiddenParent},
        {"Missing", 99, nullptr, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLHostPaneDump::FindVisible(&root, row.id), row.visible);
        EXPECT_EQ(PLHostPaneDump::FindAny(&root, row.id), row.any);
    }
    EXPECT_EQ(PLHostPaneDump::FindVisible(nullptr, 1), nullptr);
}

}  // namespace
