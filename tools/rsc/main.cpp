// rsc: the resource compiler. Builds a .rsc file from a folder of sources, or lists one.
//
//   rsc [--required FILE] SOURCE_DIR OUTPUT.rsc   compile (exit 1 on any source error)
//   rsc --list FILE.rsc                           one line per resource: type, id and the text
#include <cstdio>
#include <string>
#include <vector>

#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "ResourceCompiler.h"

namespace {

int Usage() {
    std::fprintf(stderr,
                 "usage: rsc [--required FILE] SOURCE_DIR OUTPUT.rsc\n"
                 "       rsc --list FILE.rsc\n");
    return 2;
}

std::string TypeName(uint32_t type) {
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        name += char((type >> shift) & 0xFF);
    }
    return name;
}

// Texts are printed with their line breaks escaped so that every resource stays on one line.
std::string OneLine(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\\') {
            out += "\\\\";
        } else {
            out += c;
        }
    }
    return out;
}

int List(const std::string& path) {
    PLResourceFileManager manager(0, true);
    if (!manager.LoadFromFile(path, false)) {
        std::fprintf(stderr, "rsc: %s\n", manager.GetLastError().c_str());
        return 1;
    }
    for (const auto& [type, id] : manager.ListResources()) {
        std::string line = TypeName(type) + " " + std::to_string(id);
        PLBasicString<char> text;
        if (type == kPLResText && manager.GetText(id, text)) {
            line += " " + OneLine(text.str());
        }
        std::printf("%s\n", line.c_str());
    }
    return 0;
}

int Compile(const std::string& sourceDir, const std::string& output, const std::string& required) {
    ResourceCompiler compiler;
    if (!compiler.Read(sourceDir, required) || !compiler.Write(output)) {
        for (const std::string& error : compiler.Errors()) {
            std::fprintf(stderr, "%s\n", error.c_str());
        }
        std::fprintf(stderr, "rsc: %zu error(s), %s not written\n", compiler.Errors().size(),
                     output.c_str());
        return 1;
    }
    std::printf("rsc: %s: %zu texts, %zu bitmaps, %zu bitmap families\n", output.c_str(),
                compiler.TextCount(), compiler.BitmapCount(), compiler.FamilyCount());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 2 && args[0] == "--list") {
        return List(args[1]);
    }
    std::string required;
    if (args.size() == 4 && args[0] == "--required") {
        required = args[1];
        args.erase(args.begin(), args.begin() + 2);
    }
    if (args.size() != 2 || args[0].rfind("--", 0) == 0) {
        return Usage();
    }
    return Compile(args[0], args[1], required);
}
