// The script parser: every command's fields, every kind of mistake with its message, and line
// numbers over comments, blank lines and CRLF endings.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLHostScript.h"

namespace {

using Kind = PLHostCommandKind;

struct GoodRow {
    const char* name;
    const char* line;
    Kind kind;
    int x = 0;
    int y = 0;
    int key = 0;
    int64_t number = 0;
    uint32_t paneID = 0;
    int rgb[3] = {0, 0, 0};
    const char* text = "";
};

const GoodRow kGoodRows[] = {
    {"TapOrigin", "tap 0 0", Kind::Tap},
    {"TapFarCorner", "tap 239 319", Kind::Tap, 239, 319},
    {"DownWithBlanks", "  down\t5    7  ", Kind::Down, 5, 7},
    {"MoveTrailingComment", "move 5 7 # over there", Kind::Move, 5, 7},
    {"UpCrLf", "up 1 2\r", Kind::Up, 1, 2},
    {"KeyByName", "key ok", Kind::Key, 0, 0, 18},
    {"KeyPageDown", "key pagedown", Kind::Key, 0, 0, 31},
    {"KeyByCode", "key 28", Kind::Key, 0, 0, 28},
    {"TypeRestOfLine", "type  a # b ", Kind::Type, 0, 0, 0, 0, 0, {}, " a # b "},
    {"TypeUtf8", "type 日本 wörld", Kind::Type, 0, 0, 0, 0, 0, {}, "日本 wörld"},
    {"Wait", "wait 1500", Kind::Wait, 0, 0, 0, 1500},
    {"WaitZero", "wait 0", Kind::Wait},
    // 2026-11-21 09:41:30 UTC (the tests run with TZ=UTC).
    {"ClockSeconds", "clock \"2026-11-21 09:41:30\"", Kind::Clock, 0, 0, 0, 1795254090000},
    {"ClockMinutes", "clock \"1970-01-02 00:00\"", Kind::Clock, 0, 0, 0, 86400000},
    {"Send", "send 5005", Kind::Send, 0, 0, 0, 5005},
    {"SendLargest", "send 4294967295", Kind::Send, 0, 0, 0, 4294967295},
    {"Await", "await 10041", Kind::Await, 0, 0, 0, 10041},
    {"Shot", "shot out/a.png", Kind::Shot, 0, 0, 0, 0, 0, {}, "out/a.png"},
    {"DumpQuoted", "dump \"my tree.json\"", Kind::Dump, 0, 0, 0, 0, 0, {}, "my tree.json"},
    {"ExpectShown", "expect shown 500", Kind::ExpectShown, 0, 0, 0, 0, 500},
    {"ExpectHiddenFourCC", "expect hidden 'ctrl'", Kind::ExpectHidden, 0, 0, 0, 0, 0x6374726C},
    {"ExpectPixel", "expect pixel 1 2 3 4 255", Kind::ExpectPixel, 1, 2, 0, 0, 0, {3, 4, 255}},
    {"ExpectText", "expect text 7 \"Key 18\"", Kind::ExpectText, 0, 0, 0, 0, 7, {}, "Key 18"},
    {"ExpectTextEscapes",
     R"(expect text 7 "say \"hi\"\\\n\t")",
     Kind::ExpectText,
     0,
     0,
     0,
     0,
     7,
     {},
     "say \"hi\"\\\n\t"},
    {"ExpectEmptyText", "expect text 7 \"\"", Kind::ExpectText, 0, 0, 0, 0, 7},
    {"ExpectTextHashInQuotes",
     "expect text 7 \"#1\" # note",
     Kind::ExpectText,
     0,
     0,
     0,
     0,
     7,
     {},
     "#1"},
};

TEST(ScriptParser, ReadsEveryCommand) {
    for (const GoodRow& row : kGoodRows) {
        SCOPED_TRACE(row.name);
        PLHostScriptCommand command;
        bool isCommand = false;
        std::string error;
        ASSERT_TRUE(PLHostScript::ParseLine(row.line, 12, command, isCommand, error)) << error;
        ASSERT_TRUE(isCommand);
        EXPECT_EQ(command.kind, row.kind);
        EXPECT_EQ(command.line, 12);
        EXPECT_EQ(command.x, row.x);
        EXPECT_EQ(command.y, row.y);
        EXPECT_EQ(command.key, row.key);
        EXPECT_EQ(command.number, row.number);
        EXPECT_EQ(command.paneID, row.paneID);
        EXPECT_EQ(command.red, row.rgb[0]);
        EXPECT_EQ(command.green, row.rgb[1]);
        EXPECT_EQ(command.blue, row.rgb[2]);
        EXPECT_EQ(command.text, row.text);
    }
}

struct BadRow {
    const char* name;
    const char* line;
    const char* message;
};

const BadRow kBadRows[] = {
    {"UnknownCommand", "tapp 1 2", "unknown command 'tapp'"},
    {"CommandIsCaseSensitive", "Tap 1 2", "unknown command 'Tap'"},
    {"MissingCoordinate", "tap 1", "missing arguments: expected 'tap X Y'"},
    {"ExtraCoordinate", "move 1 2 3", "too many arguments: expected 'move X Y'"},
    {"NegativeX", "tap -1 5", "x -1 is off the screen (0..239)"},
    {"XPastEdge", "down 240 5", "x 240 is off the screen (0..239)"},
    {"YPastEdge", "up 5 320", "y 320 is off the screen (0..319)"},
    {"FractionalNumber", "tap 1.5 2", "malformed number '1.5'"},
    {"HugeNumber", "tap 99999999999999999999 1", "malformed number '99999999999999999999'"},
    {"SignOnly", "tap - 1", "malformed number '-'"},
    {"KeyBelowRange", "key 16", "unknown key '16'"},
    {"KeyAboveRange", "key 32", "unknown key '32'"},
    {"KeyNameCase", "key OK", "unknown key 'OK'"},
    {"KeyMissing", "key", "missing arguments: expected 'key K'"},
    {"TypeNothing", "type", "type needs the text to type"},
    {"TypeOnlySeparator", "type ", "type needs the text to type"},
    {"WaitNegative", "wait -5", "wait -5 is out of range"},
    {"WaitExponent", "wait 1e3", "malformed number '1e3'"},
    {"WaitTooLong", "wait 31622400001", "wait 31622400001 is out of range"},
    {"ClockUnquoted", "clock 2026-11-21 09:41", "too many arguments"},
    {"ClockDateOnly", "clock \"2026-11-21\"", "malformed time '2026-11-21'"},
    {"ClockBadHour", "clock \"2026-11-21 24:00\"", "malformed time '2026-11-21 24:00'"},
    {"SendTooLarge", "send 4294967296", "message id 4294967296 is out of range"},
    {"SendWord", "send exit", "malformed number 'exit'"},
    {"AwaitWord", "await reload", "malformed number 'reload'"},
    {"AwaitNothing", "await", "missing arguments: expected 'await N'"},
    {"ShotNoFile", "shot", "missing arguments: expected 'shot FILE'"},
    {"ShotEmptyFile", "shot \"\"", "empty file name"},
    {"DumpTwoFiles", "dump a b", "too many arguments: expected 'dump FILE'"},
    {"ExpectNothing", "expect", "expect needs shown, hidden, pixel or text"},
    {"ExpectUnknown", "expect visible 5", "unknown expectation 'visible'"},
    {"ExpectPixelBlue", "expect pixel 1 2 3 4 256", "blue 256 is out of range (0..255)"},
    {"ExpectPixelOffScreen", "expect pixel 1 400 0 0 0", "y 400 is off the screen (0..319)"},
    {"ExpectTextNoText", "expect text 5", "missing arguments"},
    {"ExpectShortFourCC", "expect shown 'ab'", "malformed number ''ab''"},
    {"ExpectNegativeID", "expect shown -1", "pane id -1 is out of range"},
    {"Unterminated", "expect text 5 \"abc", "unterminated quoted text"},
    {"BackslashAtEnd", "expect text 5 \"abc\\", "unterminated quoted text"},
    {"UnknownEscape", "expect text 5 \"a\\q\"", "unknown escape '\\q' in quoted text"},
    {"TextAfterQuote", "expect text 5 \"a\"b", "text right after a closing quote"},
};

TEST(ScriptParser, RefusesMistakesWithAReason) {
    for (const BadRow& row : kBadRows) {
        SCOPED_TRACE(row.name);
        PLHostScriptCommand command;
        bool isCommand = false;
        std::string error;
        EXPECT_FALSE(PLHostScript::ParseLine(row.line, 1, command, isCommand, error));
        EXPECT_NE(error.find(row.message), std::string::npos) << "got: " << error;
    }
}

struct ScriptRow {
    const char* name;
    const char* script;
    std::vector<int> lines;  // of the commands, when it parses
    int errorLine;           // 0 when it parses
};

const ScriptRow kScriptRows[] = {
    {"Empty", "", {}, 0},
    {"CommentsOnly", "# one\n\n# two\n", {}, 0},
    {"BlankAndIndentedLines", "   \n\t\r\n   # indented comment\ntap 1 1\n", {4}, 0},
    {"LinesCountComments", "# head\ntap 1 1\n\nkey ok\n", {2, 4}, 0},
    {"CrLfEndings", "tap 1 1\r\n# c\r\nkey ok\r\n", {1, 3}, 0},
    {"NoFinalNewline", "tap 1 1\nwait 5", {1, 2}, 0},
    {"FirstErrorWins", "tap 1 1\nbogus\ntap 999 1\n", {}, 2},
    {"ErrorOnLastLine", "tap 1 1\n\n\ntap 1 999", {}, 4},
};

TEST(ScriptParser, NumbersLinesOfAWholeScript) {
    for (const ScriptRow& row : kScriptRows) {
        SCOPED_TRACE(row.name);
        std::vector<PLHostScriptCommand> commands;
        PLHostScript::Error error;
        bool parsed = PLHostScript::Parse(row.script, commands, error);
        ASSERT_EQ(parsed, row.errorLine == 0) << error.message;
        if (!parsed) {
            EXPECT_EQ(error.line, row.errorLine);
            EXPECT_FALSE(error.message.empty());
            continue;
        }
        std::vector<int> lines;
        for (const PLHostScriptCommand& command : commands) {
            lines.push_back(command.line);
        }
        EXPECT_EQ(lines, row.lines);
    }
}

}  // namespace
