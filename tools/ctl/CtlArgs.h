// The command line of calendar-ctl after the command words: options with values, flags and
// positional words, with checks that name the offending argument.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

class CtlArgs {
public:
    // `valueOptions` take the next word as their value; `flags` take none. Anything else starting
    // with "--" is an error (see Error()).
    CtlArgs(const std::vector<std::string>& words, const std::set<std::string>& valueOptions,
            const std::set<std::string>& flags);

    bool Ok() const { return mError.empty(); }
    const std::string& Error() const { return mError; }
    bool Has(const std::string& option) const {
        return mValues.count(option) || mFlags.count(option);
    }
    std::string Get(const std::string& option, const std::string& fallback = "") const;
    const std::vector<std::string>& Positional() const { return mPositional; }

private:
    std::map<std::string, std::string> mValues;
    std::set<std::string> mFlags;
    std::vector<std::string> mPositional;
    std::string mError;
};

// Strict decimal integer; false for empty text, trailing characters or overflow.
bool CtlParseInt(const std::string& text, long& value);
