// Turns a folder of readable resource sources into a compiled resource file.
//
// The folder holds:
//   texts.txt          one text a line: "ID TEXT"; '#' at the start of a line begins a comment;
//                      UTF-8; escapes \n (line break), \t (tab), \s (a space, for leading or
//                      trailing spaces) and \\ (backslash)
//   bitmaps/ID.png     one bitmap per PNG file, named by its id
//   families.txt       one bitmap family a line: "ID NORMAL [PRESSED [DISABLED [SELECTED]]]",
//                      bitmap ids, 0 = none (the normal one is required)
//   required-ids.txt   ids the program asks for, a type and one or more ids a line:
//                      "text 10032 10042", "bitm 10130", "bitf 30371"
// Every problem is reported as "file:line: what", all of them, not only the first.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "PLBitmap.h"

class ResourceCompiler {
public:
    // Reads the sources of `sourceDir`; `requiredFile` empty means the folder's required-ids.txt
    // when it exists. Returns false when any source is wrong; Errors() tells what.
    bool Read(const std::string& sourceDir, const std::string& requiredFile = {});
    // Writes the resources read to `outputPath`. Returns false (with an error) on failure.
    bool Write(const std::string& outputPath);

    const std::vector<std::string>& Errors() const { return mErrors; }
    size_t TextCount() const { return mTexts.size(); }
    size_t BitmapCount() const { return mBitmaps.size(); }
    size_t FamilyCount() const { return mFamilies.size(); }

    // Decodes the escapes of a text source; returns false with a reason on a bad escape.
    static bool Unescape(const std::string& raw, std::string& text, std::string& reason);

private:
    struct Text {
        std::string where;
        std::string value;
    };
    struct Bitmap {
        std::string where;
        std::unique_ptr<PLBitmap> image;
    };
    struct Family {
        std::string where;
        uint32_t bitmaps[4];
    };
    // A line of a source file that holds something, with its "path:number" for messages.
    struct SourceLine {
        std::string where;
        std::string text;
    };

    // The lines of a source file without line ends, blank lines and comments; a file that cannot be
    // read is reported and gives no lines.
    std::vector<SourceLine> ReadSource(const std::string& path);
    void ReadTexts(const std::string& path);
    void ReadBitmaps(const std::string& folder);
    void ReadFamilies(const std::string& path);
    void ReadRequired(const std::string& path);
    void CheckFamilyReferences();
    bool Defines(const std::string& type, uint32_t id) const;
    void Fail(const std::string& where, const std::string& what);

    std::map<uint32_t, Text> mTexts;
    std::map<uint32_t, Bitmap> mBitmaps;
    std::map<uint32_t, Family> mFamilies;
    std::vector<std::string> mErrors;
};
