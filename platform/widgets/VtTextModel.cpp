// Edit-field text: UTF-8 boundaries, limits, filters and the caret.
#include "VtTextModel.h"

namespace {

bool IsContinuation(unsigned char b) {
    return (b & 0xC0) == 0x80;
}

}  // namespace

size_t VtTextModel::CharLength(std::string_view text, size_t offset) {
    if (offset >= text.size()) {
        return 0;
    }
    const auto b = static_cast<unsigned char>(text[offset]);
    if (b < 0x80) {
        return 1;
    }
    size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (b >= 0xC2 && b <= 0xDF) {
        length = 2;
    } else if (b >= 0xE0 && b <= 0xEF) {
        length = 3;
        // No overlong forms and no UTF-16 surrogates.
        low = b == 0xE0 ? 0xA0 : 0x80;
        high = b == 0xED ? 0x9F : 0xBF;
    } else if (b >= 0xF0 && b <= 0xF4) {
        length = 4;
        low = b == 0xF0 ? 0x90 : 0x80;
        high = b == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 1;
    }
    if (offset + length > text.size()) {
        return 1;
    }
    const auto second = static_cast<unsigned char>(text[offset + 1]);
    if (second < low || second > high) {
        return 1;
    }
    for (size_t i = 2; i < length; ++i) {
        if (!IsContinuation(static_cast<unsigned char>(text[offset + i]))) {
            return 1;
        }
    }
    return length;
}

size_t VtTextModel::PreviousBoundary(std::string_view text, size_t offset) {
    if (offset > text.size()) {
        offset = text.size();
    }
    // Boundaries are only certain when read from the start (an invalid byte may look like the
    // tail of a sequence); texts of fields are short.
    size_t position = 0;
    size_t previous = 0;
    while (position < offset) {
        previous = position;
        position += CharLength(text, position);
    }
    return previous;
}

size_t VtTextModel::FitBytes(std::string_view text, size_t limit) {
    if (limit == 0 || text.size() <= limit) {
        return text.size();
    }
    size_t position = 0;
    while (position < text.size()) {
        const size_t next = position + CharLength(text, position);
        if (next > limit) {
            break;
        }
        position = next;
    }
    return position;
}

size_t VtTextModel::FitCharacters(std::string_view text, size_t characters) {
    if (characters == 0) {
        return text.size();
    }
    size_t position = 0;
    for (size_t count = 0; count < characters && position < text.size(); ++count) {
        position += CharLength(text, position);
    }
    return position;
}

size_t VtTextModel::CountCharacters(std::string_view text) {
    size_t count = 0;
    for (size_t position = 0; position < text.size(); position += CharLength(text, position)) {
        ++count;
    }
    return count;
}

bool VtTextModel::IsValidUTF8(std::string_view text) {
    for (size_t position = 0; position < text.size();) {
        const size_t length = CharLength(text, position);
        if (length == 1 && static_cast<unsigned char>(text[position]) >= 0x80) {
            return false;
        }
        position += length;
    }
    return true;
}

void VtTextModel::SetLimit(size_t limit) {
    mLimit = limit;
    if (mLimit != 0 && mText.size() > mLimit) {
        mText.resize(FitBytes(mText, mLimit));
    }
    SetCaret(mCaret);
}

void VtTextModel::SetCharacterLimit(size_t characters) {
    mCharacterLimit = characters;
    mText.resize(FitCharacters(mText, mCharacterLimit));
    SetCaret(mCaret);
}

bool VtTextModel::SetText(std::string_view text) {
    std::string_view kept = text.substr(0, FitBytes(text, mLimit));
    kept = kept.substr(0, FitCharacters(kept, mCharacterLimit));
    const bool changed = kept != mText;
    mText.assign(kept);
    mCaret = mText.size();
    return changed;
}

bool VtTextModel::Accepts(std::string_view character) const {
    const auto first = static_cast<unsigned char>(character.front());
    if (first == '\n') {
        return mMultiLine && (mAccepted.empty() || mAccepted.find('\n') != std::string::npos);
    }
    if (first < 0x20 || first == 0x7F) {
        return false;
    }
    if (mAccepted.empty()) {
        return true;
    }
    return character.size() == 1 && mAccepted.find(character.front()) != std::string::npos;
}

bool VtTextModel::Insert(std::string_view typed) {
    std::string filtered;
    for (size_t position = 0; position < typed.size();) {
        const size_t length = CharLength(typed, position);
        const std::string_view character = typed.substr(position, length);
        if (Accepts(character)) {
            filtered.append(character);
        }
        position += length;
    }
    if (mLimit != 0) {
        const size_t room = mText.size() < mLimit ? mLimit - mText.size() : 0;
        filtered.resize(room == 0 ? 0 : FitBytes(filtered, room));
    }
    if (mCharacterLimit != 0) {
        const size_t used = CountCharacters(mText);
        const size_t room = used < mCharacterLimit ? mCharacterLimit - used : 0;
        filtered.resize(room == 0 ? 0 : FitCharacters(filtered, room));
    }
    if (filtered.empty()) {
        return false;
    }
    mText.insert(mCaret, filtered);
    // Stray bytes on either side may join the typed ones into one character; the caret must not
    // be left inside it.
    SetCaret(mCaret + filtered.size());
    return true;
}

bool VtTextModel::EraseBack() {
    if (mCaret == 0) {
        return false;
    }
    const size_t start = PreviousBoundary(mText, mCaret);
    mText.erase(start, mCaret - start);
    // Stray bytes that met across the erased character may now form one.
    SetCaret(start);
    return true;
}

bool VtTextModel::Type(std::string_view input) {
    bool changed = false;
    size_t start = 0;
    while (start <= input.size()) {
        const size_t erase = input.find('\b', start);
        const std::string_view piece = input.substr(
            start, erase == std::string_view::npos ? std::string_view::npos : erase - start);
        changed = Insert(piece) || changed;
        if (erase == std::string_view::npos) {
            break;
        }
        changed = EraseBack() || changed;
        start = erase + 1;
    }
    return changed;
}

void VtTextModel::SetCaret(size_t offset) {
    if (offset >= mText.size()) {
        mCaret = mText.size();
        return;
    }
    size_t position = 0;
    while (position < offset) {
        const size_t next = position + CharLength(mText, position);
        if (next > offset) {
            break;
        }
        position = next;
    }
    mCaret = position;
}

void VtTextModel::MoveCaret(int characters) {
    for (; characters > 0 && mCaret < mText.size(); --characters) {
        mCaret += CharLength(mText, mCaret);
    }
    for (; characters < 0 && mCaret > 0; ++characters) {
        mCaret = PreviousBoundary(mText, mCaret);
    }
}
