// Writing a benchmark's event store once and finding it again on later runs.
#include "BenchStoreCache.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "APEventRec.h"
#include "PLDeviceRoot.h"

bool BenchStoreCache::Use(const std::string& name, const Seed& seed, std::string& error) {
    const std::filesystem::path root = std::filesystem::path(CAL_BINARY_DIR) / "bench-cache" / name;
    // Written last, so a run stopped halfway leaves a store that is rebuilt next time.
    const std::filesystem::path done = root / "complete";
    PLDeviceRoot::SetRoot(root.string());
    if (std::filesystem::exists(done)) {
        return true;
    }
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
    const std::vector<_EventRecInfo> events = seed();
    std::fprintf(stderr, "building a store of %zu events in %s (once)\n", events.size(),
                 root.c_str());
    APEventRec store;
    std::vector<int> ids(events.size());
    // Batches bound the memory of one transaction on the largest stores.
    constexpr size_t kBatch = 50000;
    for (size_t at = 0; at < events.size(); at += kBatch) {
        const int count = int(std::min(kBatch, events.size() - at));
        if (store.AddEventRecs(events.data() + at, count, ids.data() + at) != count) {
            error = store.GetLastError();
            return false;
        }
    }
    std::FILE* marker = std::fopen(done.c_str(), "w");
    if (marker != nullptr) {
        std::fclose(marker);
    }
    return true;
}
