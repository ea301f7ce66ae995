// The toolkit's string: a growable byte string, UTF-8 by convention.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

template <class C>
class PLBasicString {
public:
    PLBasicString() = default;
    PLBasicString(const C* text) : mText(text ? text : std::basic_string<C>()) {}
    PLBasicString(const C* text, size_t length) : mText(text, length) {}
    PLBasicString(std::basic_string<C> text) : mText(std::move(text)) {}
    PLBasicString(std::basic_string_view<C> text) : mText(text) {}

    const C* c_str() const { return mText.c_str(); }
    const C* GetBuffer() const { return mText.c_str(); }
    size_t Length() const { return mText.size(); }
    bool IsEmpty() const { return mText.empty(); }
    // Truncates (or pads with NUL) to exactly `length` characters.
    void SetLength(size_t length) { mText.resize(length); }
    void Assign(const C* text) { mText = text ? text : std::basic_string<C>(); }
    void Append(const C* text) { mText += text ? text : std::basic_string<C>(); }
    void Append(const PLBasicString& other) { mText += other.mText; }
    void Append(C c) { mText += c; }

    PLBasicString& operator+=(const PLBasicString& other) {
        mText += other.mText;
        return *this;
    }
    PLBasicString& operator+=(const C* text) {
        Append(text);
        return *this;
    }
    PLBasicString operator+(const PLBasicString& other) const {
        return PLBasicString(mText + other.mText);
    }
    bool operator==(const PLBasicString& other) const { return mText == other.mText; }
    bool operator==(const C* text) const { return text && mText == text; }
    C operator[](size_t i) const { return mText[i]; }

    const std::basic_string<C>& str() const { return mText; }
    std::basic_string_view<C> view() const { return mText; }

private:
    std::basic_string<C> mText;
};

using PLString = PLBasicString<char>;

// The empty string that factories take for "no text".
inline const PLBasicString<char> kEmptyString;
