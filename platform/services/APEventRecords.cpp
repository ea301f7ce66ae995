// The records' empty state.
#include "APEventRecords.h"

#include <cassert>
#include <cstring>

void InitEventRecInfo(_EventRecInfo* record) {
    assert(record && "InitEventRecInfo needs a record");
    if (record) {
        std::memset(record, 0, sizeof *record);
    }
}
