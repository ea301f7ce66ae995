// Fuzz target: event records of arbitrary bytes in the event store. Up to four records from the
// input are added to a scratch store, read back, and then the month, week and day queries run over
// dates taken from the input, in one of several time zones; every node list is freed. A stored
// record must read back byte for byte, and no query may loop without bound or hand out a subject
// without its terminating NUL.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "APDatabase.h"
#include "APEventRec.h"
#include "APEventRecords.h"
#include "FuzzCheck.h"
#include "FuzzTempDir.h"
#include "PLDate.h"
#include "PLDeviceRoot.h"
#include "PLTimeStamp.h"

namespace {

constexpr size_t kControlBytes = 4;
constexpr size_t kMaxRecords = 4;
// Far more nodes than four records can give one day or month; more means a runaway expansion.
constexpr int kMaxNodes = 4 * 32 * 62;

// Zones with whole, half-hour and quarter-hour offsets, daylight saving on both hemispheres and
// the widest offsets either side.
constexpr const char* kZones[] = {"UTC",
                                  "Asia/Shanghai",
                                  "America/New_York",
                                  "Asia/Kathmandu",
                                  "Australia/Lord_Howe",
                                  "Pacific/Kiritimati",
                                  "Pacific/Pago_Pago",
                                  "Europe/Berlin"};

class ZoneScope {
public:
    explicit ZoneScope(const char* zone) {
        const char* saved = std::getenv("TZ");
        mSaved = saved != nullptr ? saved : "UTC";
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ZoneScope() {
        setenv("TZ", mSaved.c_str(), 1);
        tzset();
    }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;

private:
    std::string mSaved;
};

std::vector<_EventRecInfo> RecordsOf(const uint8_t* data, size_t size) {
    std::vector<_EventRecInfo> records;
    for (size_t pos = 0; pos < size && records.size() < kMaxRecords; pos += sizeof(_EventRecInfo)) {
        _EventRecInfo record;
        std::memset(&record, 0, sizeof record);
        std::memcpy(&record, data + pos, std::min(sizeof record, size - pos));
        records.push_back(record);
    }
    return records;
}

void CheckStored(APEventRec& store, const _EventRecInfo& added, int id) {
    _EventRecInfo read;
    std::memset(&read, 0, sizeof read);
    FuzzCheck(store.GetEventRec(id, &read) == 1, "a stored record can be read");
    FuzzCheck(read.id == id, "a record reads back with its id");
    FuzzCheck(std::memcmp(reinterpret_cast<const uint8_t*>(&read) + sizeof read.id,
                          reinterpret_cast<const uint8_t*>(&added) + sizeof added.id,
                          sizeof read - sizeof read.id) == 0,
              "a record reads back byte for byte");
}

template <class Node>
int CountAndFree(Node* head) {
    int count = 0;
    for (Node* node = head; node != nullptr; node = node->next) {
        FuzzCheck(++count <= kMaxNodes, "a query gives a bounded number of nodes");
    }
    APFreeEventNodes(head);
    return count;
}

void CheckDay(APEventRec& store, const PLDate& date) {
    PLBasicString<char> unused;
    const long start = PLDate2TimeStamp(date, nullptr);
    const long end = PLDate2TimeStamp(date + 1, nullptr) - 1;
    if (end < start) {
        return;
    }
    APDayEventNode* head = store.GetDayEventView(start, end, unused);
    for (APDayEventNode* node = head; node != nullptr; node = node->next) {
        FuzzCheck(std::memchr(node->subject, '\0', sizeof node->subject) != nullptr,
                  "a day node's subject is terminated");
        FuzzCheck(node->startHour <= 23, "a day node's start hour is an hour");
    }
    CountAndFree(head);
}

void RunQueries(APEventRec& store, const uint8_t* controls) {
    // A day from 1970 to 2037 and the month, week and day around it.
    const int offset = (controls[1] | controls[2] << 8) % (68 * 365);
    PLDate day(1970, 1, 1);
    day += offset;
    const PLDate monthFirst(day.year, day.month, 1);
    const PLDate monthNext(day.year, day.month + 1, 1);
    PLBasicString<char> unused;
    CountAndFree(store.QueryMonthEventView(PLDate2TimeStamp(monthFirst, nullptr),
                                           PLDate2TimeStamp(monthNext, nullptr), unused));
    const PLDate weekFirst = day - (day.Weekday() - 1);
    CountAndFree(store.QueryWeekEventView(PLDate2TimeStamp(weekFirst, nullptr),
                                          PLDate2TimeStamp(weekFirst + 7, nullptr), unused));
    // The month view's own span: up to six weeks from the input's day.
    const int span = 1 + controls[3] % 42;
    CountAndFree(store.QueryMonthEventView(PLDate2TimeStamp(day, nullptr),
                                           PLDate2TimeStamp(day + span, nullptr), unused));
    for (int i = 0; i < 3; ++i) {
        CheckDay(store, day + i * (controls[3] % 5));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < kControlBytes) {
        return 0;
    }
    FuzzTempDir dir;
    if (!dir.Ok()) {
        return 0;
    }
    const ZoneScope zone(kZones[data[0] % (sizeof kZones / sizeof kZones[0])]);
    PLDeviceRoot::SetRoot(dir.Path());
    APDatabase::ForgetChecks();
    {
        APEventRec store;
        FuzzCheck(store.IsOpen(), "a store opens in a fresh device root");
        {
            for (_EventRecInfo& record : RecordsOf(data + kControlBytes, size - kControlBytes)) {
                const _EventRecInfo added = record;
                const int id = store.AddEventRec(&record);
                if (id > 0) {
                    CheckStored(store, added, id);
                }
            }
            RunQueries(store, data);
        }
    }
    PLDeviceRoot::SetRoot("");
    return 0;
}
