// The text of an edit field: UTF-8 bytes with a byte limit, an optional set of accepted
// characters, a single- or multi-line mode and a caret. Every cut falls on a character boundary;
// bytes that are not valid UTF-8 count as one character each, so nothing is ever cut inside a
// sequence and nothing read past the end.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class VtTextModel {
public:
    // `limit` in bytes; 0 means no limit.
    explicit VtTextModel(size_t limit = 0) : mLimit(limit) {}

    void SetLimit(size_t limit);
    size_t GetLimit() const { return mLimit; }
    // A second limit in characters (0: none), for fields whose size is given to the user in
    // characters while the record keeps bytes; both limits hold at once.
    void SetCharacterLimit(size_t characters);
    size_t GetCharacterLimit() const { return mCharacterLimit; }
    // Number of characters of `text` (an invalid byte counts as one).
    static size_t CountCharacters(std::string_view text);
    // Only these characters are accepted from input (ASCII set, e.g. "0123456789"); empty accepts
    // every character.
    void SetAcceptedChars(std::string_view chars) { mAccepted = chars; }
    const std::string& GetAcceptedChars() const { return mAccepted; }
    void SetMultiLine(bool multiLine) { mMultiLine = multiLine; }
    bool IsMultiLine() const { return mMultiLine; }

    const std::string& GetText() const { return mText; }
    // Replaces the text (the caller's own text: not filtered, only cut to the limit); the caret
    // goes to the end. Returns true when the text changed.
    bool SetText(std::string_view text);
    // Inserts typed text at the caret: characters that are not accepted are dropped (line breaks
    // too in a single-line model), and what does not fit in the limit is cut at a character
    // boundary. Returns true when the text changed.
    bool Insert(std::string_view typed);
    // Erases the character before the caret. Returns true when something was erased.
    bool EraseBack();
    // Applies one piece of typed input: "\b" characters erase, the rest is inserted.
    bool Type(std::string_view input);

    size_t GetCaret() const { return mCaret; }
    // Places the caret at a byte offset, moved back to the start of the character it falls in.
    void SetCaret(size_t offset);
    // Moves the caret by whole characters.
    void MoveCaret(int characters);

    // Byte length of the longest prefix of `text` that fits in `limit` bytes without cutting a
    // character (limit 0: all of it).
    static size_t FitBytes(std::string_view text, size_t limit);
    // Byte length of the first `characters` characters of `text` (0: all of it).
    static size_t FitCharacters(std::string_view text, size_t characters);
    // Length of the character that starts at `offset` (1 for an invalid byte, 0 at the end).
    static size_t CharLength(std::string_view text, size_t offset);
    // Start of the character before `offset`.
    static size_t PreviousBoundary(std::string_view text, size_t offset);
    // Whether the whole text is valid UTF-8.
    static bool IsValidUTF8(std::string_view text);

private:
    bool Accepts(std::string_view character) const;

    std::string mText;
    size_t mLimit;
    size_t mCharacterLimit = 0;
    size_t mCaret = 0;
    std::string mAccepted;
    bool mMultiLine = false;
};
