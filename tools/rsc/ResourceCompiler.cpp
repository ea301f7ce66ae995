// Reading resource sources and writing the compiled file; the source formats are in the header.
#include "ResourceCompiler.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "PLResourceFileManager.h"
#include "PLTypes.h"

namespace fs = std::filesystem;

namespace {

// Parses a decimal id 1..4294967295; anything else (signs, letters, overflow, 0) is refused.
bool ParseID(const std::string& word, uint32_t& id) {
    if (word.empty() || word.size() > 10 ||
        !std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return false;
    }
    unsigned long long value = std::strtoull(word.c_str(), nullptr, 10);
    if (value == 0 || value > 0xFFFFFFFFull) {
        return false;
    }
    id = uint32_t(value);
    return true;
}

// Bitmap ids may be 0 in a family line ("none").
bool ParseBitmapRef(const std::string& word, uint32_t& id) {
    if (word == "0") {
        id = 0;
        return true;
    }
    return ParseID(word, id);
}

std::vector<std::string> SplitWords(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    std::string word;
    while (in >> word) {
        words.push_back(word);
    }
    return words;
}

}  // namespace

void ResourceCompiler::Fail(const std::string& where, const std::string& what) {
    mErrors.push_back(where + ": " + what);
}

std::vector<ResourceCompiler::SourceLine> ResourceCompiler::ReadSource(const std::string& path) {
    std::vector<SourceLine> lines;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        Fail(path, "cannot be read");
        return lines;
    }
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#') {
            continue;
        }
        lines.push_back({path + ":" + std::to_string(number), line.substr(first)});
    }
    return lines;
}

bool ResourceCompiler::Unescape(const std::string& raw, std::string& text, std::string& reason) {
    text.clear();
    for (size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\\') {
            text += raw[i];
            continue;
        }
        if (i + 1 == raw.size()) {
            reason = "a backslash ends the line (write \\\\ for a backslash)";
            return false;
        }
        switch (raw[++i]) {
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 's':
                text += ' ';
                break;
            case '\\':
                text += '\\';
                break;
            default:
                reason = std::string("unknown escape \\") + raw[i] + " (known: \\n \\t \\s \\\\)";
                return false;
        }
    }
    return true;
}

bool ResourceCompiler::Read(const std::string& sourceDir, const std::string& requiredFile) {
    mErrors.clear();
    if (!fs::is_directory(sourceDir)) {
        Fail(sourceDir, "is not a folder of resource sources");
        return false;
    }
    const fs::path dir(sourceDir);
    ReadTexts((dir / "texts.txt").string());
    if (fs::is_directory(dir / "bitmaps")) {
        ReadBitmaps((dir / "bitmaps").string());
    }
    if (fs::exists(dir / "families.txt")) {
        ReadFamilies((dir / "families.txt").string());
    }
    CheckFamilyReferences();
    std::string required = requiredFile;
    if (required.empty() && fs::exists(dir / "required-ids.txt")) {
        required = (dir / "required-ids.txt").string();
    }
    if (!required.empty()) {
        ReadRequired(required);
    }
    return mErrors.empty();
}

void ResourceCompiler::ReadTexts(const std::string& path) {
    for (const SourceLine& line : ReadSource(path)) {
        const std::string& where = line.where;
        size_t gap = line.text.find_first_of(" \t");
        std::string idWord = line.text.substr(0, gap);
        uint32_t id = 0;
        if (!ParseID(idWord, id)) {
            Fail(where, "'" + idWord + "' is not a text id (a number from 1 to 4294967295)");
            continue;
        }
        size_t start =
            gap == std::string::npos ? std::string::npos : line.text.find_first_not_of(" \t", gap);
        if (start == std::string::npos) {
            Fail(where, "text " + idWord + " has no text after its id");
            continue;
        }
        std::string raw = line.text.substr(start);
        raw.erase(raw.find_last_not_of(" \t") + 1);
        std::string value;
        std::string reason;
        if (!Unescape(raw, value, reason)) {
            Fail(where, reason);
            continue;
        }
        if (!PLResourceFileManager::IsValidUTF8(value)) {
            Fail(where, "text " + idWord + " is not valid UTF-8");
            continue;
        }
        auto [it, added] = mTexts.emplace(id, Text{where, value});
        if (!added) {
            Fail(where, "text " + idWord + " is already defined at " + it->second.where);
        }
    }
}

void ResourceCompiler::ReadBitmaps(const std::string& folder) {
    std::vector<fs::path> files;
    for (const auto& item : fs::directory_iterator(folder)) {
        if (item.path().extension() == ".png") {
            files.push_back(item.path());
        }
    }
    std::sort(files.begin(), files.end());  // stable messages whatever the folder order
    for (const fs::path& file : files) {
        const std::string where = file.string();
        uint32_t id = 0;
        if (!ParseID(file.stem().string(), id)) {
            Fail(where, "a bitmap file must be named by its id, like 10130.png");
            continue;
        }
        PLBitmap* loaded = nullptr;
        std::string error;
        bool ok = PLBitmap::LoadPNG(where, loaded, error);
        std::unique_ptr<PLBitmap> image(loaded);
        if (!ok || image == nullptr) {
            Fail(where, "unreadable PNG: " + (error.empty() ? std::string("no image") : error));
            continue;
        }
        if (image->GetWidth() < 1 || image->GetHeight() < 1 ||
            image->GetWidth() > PLResourceFileManager::kMaxBitmapSide ||
            image->GetHeight() > PLResourceFileManager::kMaxBitmapSide) {
            Fail(where, "bitmap size " + std::to_string(image->GetWidth()) + "x" +
                            std::to_string(image->GetHeight()) + " is not allowed");
            continue;
        }
        mBitmaps.emplace(id, Bitmap{where, std::move(image)});
    }
}

void ResourceCompiler::ReadFamilies(const std::string& path) {
    for (const SourceLine& line : ReadSource(path)) {
        const std::string& where = line.where;
        std::vector<std::string> words = SplitWords(line.text);
        if (words.size() < 2 || words.size() > 5) {
            Fail(where,
                 "expected a family id and 1 to 4 bitmap ids (normal pressed disabled selected)");
            continue;
        }
        Family family{where, {0, 0, 0, 0}};
        uint32_t id = 0;
        bool ok = ParseID(words[0], id);
        if (!ok) {
            Fail(where, "'" + words[0] + "' is not a family id");
            continue;
        }
        for (size_t i = 1; i < words.size() && ok; ++i) {
            if (!ParseBitmapRef(words[i], family.bitmaps[i - 1])) {
                Fail(where, "'" + words[i] + "' is not a bitmap id (0 for none)");
                ok = false;
            }
        }
        if (!ok) {
            continue;
        }
        if (family.bitmaps[0] == 0) {
            Fail(where, "family " + words[0] + " needs a normal bitmap (the first one)");
            continue;
        }
        auto [it, added] = mFamilies.emplace(id, family);
        if (!added) {
            Fail(where, "family " + words[0] + " is already defined at " + it->second.where);
        }
    }
}

void ResourceCompiler::CheckFamilyReferences() {
    for (const auto& [id, family] : mFamilies) {
        for (uint32_t bitmapID : family.bitmaps) {
            if (bitmapID != 0 && mBitmaps.count(bitmapID) == 0) {
                Fail(family.where, "family " + std::to_string(id) + " names bitmap " +
                                       std::to_string(bitmapID) + ", but there is no bitmaps/" +
                                       std::to_string(bitmapID) + ".png");
            }
        }
    }
}

bool ResourceCompiler::Defines(const std::string& type, uint32_t id) const {
    if (type == "text") {
        return mTexts.count(id) != 0;
    }
    if (type == "bitm") {
        return mBitmaps.count(id) != 0;
    }
    return mFamilies.count(id) != 0;
}

void ResourceCompiler::ReadRequired(const std::string& path) {
    for (const SourceLine& line : ReadSource(path)) {
        const std::string& where = line.where;
        std::vector<std::string> words = SplitWords(line.text);
        const std::string& type = words[0];
        if (type != "text" && type != "bitm" && type != "bitf") {
            Fail(where, "'" + type + "' is not a resource type (text, bitm or bitf)");
            continue;
        }
        if (words.size() < 2) {
            Fail(where, "no ids after '" + type + "'");
            continue;
        }
        for (size_t i = 1; i < words.size(); ++i) {
            uint32_t id = 0;
            if (!ParseID(words[i], id)) {
                Fail(where, "'" + words[i] + "' is not an id");
            } else if (!Defines(type, id)) {
                Fail(where, type + " " + words[i] + " is required but not defined by the sources");
            }
        }
    }
}

bool ResourceCompiler::Write(const std::string& outputPath) {
    PLResourceFileWriter writer;
    for (const auto& [id, text] : mTexts) {
        writer.AddText(id, text.value);
    }
    for (const auto& [id, bitmap] : mBitmaps) {
        writer.AddBitmap(id, *bitmap.image);
    }
    for (const auto& [id, family] : mFamilies) {
        writer.AddBitmapFamily(id, family.bitmaps);
    }
    std::string error;
    if (!writer.Write(outputPath, error)) {
        Fail(outputPath, error);
        return false;
    }
    return true;
}
