// Text lookup by id for every screen; a gap in the resource file shows as "#ID", never as a crash.
#include "APGetStr.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>

#include "PLAppContext.h"

namespace {

// Reporting a missing id once keeps standard error readable when a screen repaints the same
// label many times; the set only grows by ids that are actually missing.
void ReportMissingOnce(uint32_t id) {
    static std::mutex lock;
    static std::set<uint32_t> reported;
    std::lock_guard<std::mutex> guard(lock);
    if (reported.insert(id).second) {
        std::fprintf(stderr, "APGetStr: text %u is missing from the resource files\n", id);
    }
}

}  // namespace

PLBasicString<char> APGetStr(uint32_t id) {
    PLBasicString<char> text;
    PLAppContext* context = PLAppContext::GetInstance();
    if (context != nullptr && context->GetText(id, text)) {
        return text;
    }
    ReportMissingOnce(id);
    // Built in two steps: GCC 12 warns (-Wrestrict, a false positive) on "#" + std::to_string at
    // -O3.
    std::string marker("#");
    marker += std::to_string(id);
    return PLBasicString<char>(marker);
}
