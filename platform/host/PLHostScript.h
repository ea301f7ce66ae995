// The simulator's script language: one command a line, '#' starts a comment.
//
//   tap X Y | down X Y | move X Y | up X Y        pen events (x 0..239 across, y 0..319 down)
//   key K                                         17..31 or up ok down left right pageup pagedown
//   type TEXT                                     the rest of the line, to the input method
//   wait MS | clock "YYYY-MM-DD HH:MM[:SS]"       move the platform clock
//   send N                                        an inter-application message
//   await N                                       wait, in real time, for message N to arrive
//                                                 from another process (calendar-ctl send N)
//   shot FILE | dump FILE                         the screen as PNG, the shown pane tree as JSON
//   expect shown ID | expect hidden ID
//   expect pixel X Y R G B | expect text ID "TEXT"
//
// Pane ids are decimal numbers or four-character codes in single quotes ('ctrl'). Quoted text
// takes \" \\ \n and \t escapes. The whole script is parsed before anything runs, so that a
// mistake on line 40 is reported before line 1 has touched the application.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class PLHostCommandKind {
    Tap,
    Down,
    Move,
    Up,
    Key,
    Type,
    Wait,
    Clock,
    Send,
    Await,
    Shot,
    Dump,
    ExpectShown,
    ExpectHidden,
    ExpectPixel,
    ExpectText,
};

struct PLHostScriptCommand {
    PLHostCommandKind kind = PLHostCommandKind::Tap;
    int line = 0;
    int x = 0;  // pen commands and expect pixel
    int y = 0;
    uint8_t key = 0;
    int64_t number = 0;  // wait: milliseconds; clock: epoch milliseconds; send, await: message id
    uint32_t paneID = 0;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    std::string text;  // type and expect text: the text; shot and dump: the file
};

class PLHostScript {
public:
    struct Error {
        int line = 0;
        std::string message;
    };

    // Parses a whole script; false with the first bad line's number and what is wrong with it.
    static bool Parse(std::string_view script, std::vector<PLHostScriptCommand>& commands,
                      Error& error);
    // Parses one line. Returns false with a message for a bad line; `isCommand` is false for
    // blank and comment lines.
    static bool ParseLine(std::string_view line, int lineNumber, PLHostScriptCommand& command,
                          bool& isCommand, std::string& error);
    // The words of a line: blanks separate them, "..." quotes one (with escapes), a word that
    // starts with '#' ends the line. False on an unterminated quote or a bad escape.
    static bool Tokenize(std::string_view line, std::vector<std::string>& words,
                         std::vector<bool>& quoted, std::string& error);

    // The longest wait a script may ask for (a year), so that the clock stays in range.
    static constexpr int64_t kMaxWaitMs = 366LL * 24 * 3600 * 1000;
};
