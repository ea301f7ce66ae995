// The share library's C entry points. The sheet lives only for the duration of one call, so
// DestroyShareView has nothing left to release; it exists because the loader calls it before
// closing the library.
#include "VtShare.h"

#include <memory>

#include "VtShareSheet.h"

extern "C" int MakeVtShareDlg(PLVector<PLBasicString<char>>& files) {
    std::vector<std::string> paths;
    for (const PLBasicString<char>& file : files) {
        if (!file.IsEmpty()) {
            paths.push_back(file.str());
        }
    }
    if (paths.empty()) {
        return 0;
    }
    auto sheet = std::make_unique<VtShareSheet>(std::move(paths));
    return sheet->Run();
}

extern "C" void DestroyShareView() {}
