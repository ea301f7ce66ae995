// Option parsing for calendar-ctl.
#include "CtlArgs.h"

#include <cerrno>
#include <cstdlib>

CtlArgs::CtlArgs(const std::vector<std::string>& words, const std::set<std::string>& valueOptions,
                 const std::set<std::string>& flags) {
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.rfind("--", 0) != 0) {
            mPositional.push_back(word);
        } else if (valueOptions.count(word)) {
            if (i + 1 >= words.size()) {
                mError = word + " needs a value";
                return;
            }
            mValues[word] = words[++i];
        } else if (flags.count(word)) {
            mFlags.insert(word);
        } else {
            mError = "unknown option " + word;
            return;
        }
    }
}

std::string CtlArgs::Get(const std::string& option, const std::string& fallback) const {
    const auto found = mValues.find(option);
    return found == mValues.end() ? fallback : found->second;
}

bool CtlParseInt(const std::string& text, long& value) {
    if (text.empty()) {
        return false;
    }
    errno = 0;
    char* end = nullptr;
    const long parsed = std::strtol(text.c_str(), &end, 10);
    if (errno != 0 || *end != '\0') {
        return false;
    }
    value = parsed;
    return true;
}
