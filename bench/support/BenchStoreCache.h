// An event store seeded once and kept under the build directory, so that benchmark runs after the
// first skip the minutes it takes to write a large store.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "APEventRecords.h"

class BenchStoreCache {
public:
    using Seed = std::function<std::vector<_EventRecInfo>()>;

    // Points the device root at bench-cache/`name` in the build directory, writing the events
    // `seed` gives into a fresh store there first unless an earlier run completed it. False with
    // the store's reason in `error` when the events cannot be written.
    static bool Use(const std::string& name, const Seed& seed, std::string& error);
};
