// The event store on SQLite: records, their derived query columns, and the range queries.
#include "APEventRec.h"

#include <sqlite3.h>

#include <algorithm>
#include <cassert>
#include <cstring>
#include <new>

#include "APDatabase.h"
#include "APRecordCodec.h"
#include "APRecurrenceRule.h"
#include "APSeriesCache.h"
#include "APStampDecoder.h"
#include "APStoreFiles.h"

namespace {

constexpr long kDay = 86400;
// Candidates are fetched this far beyond a range: all-day events are coded as UTC dates, and the
// widest UTC offsets are under 15 hours.
constexpr long kRangeMargin = 15 * 3600 + 1;
// A repeating event's series can reach one day further in dates than in stamps.
constexpr int64_t kSeriesSlack = 2 * kDay;
// Above every level a span can have (reach - start fits in 2^33 seconds).
constexpr int kNoLevelLimit = 64;
// Occurrences longer than a year are not looked back for in the day query.
constexpr int kLongestOccurrence = 366;

struct DerivedColumns {
    int64_t reach;
    int lvl;
};

DerivedColumns Derive(const _EventRecInfo& record) {
    const int64_t start = record.startStamp;
    const int64_t end = record.endStamp;
    int64_t reach = std::max(start, end) + 1;
    if (APRecurrenceRule::IsRepeatingKind(record.recurKind)) {
        const int64_t duration = std::max<int64_t>(0, end - start);
        reach = std::max(reach, int64_t(record.lastStamp) + duration + kSeriesSlack + 1);
    }
    const uint64_t length = uint64_t(reach - start);
    int lvl = 0;
    while ((uint64_t(1) << lvl) < length) {
        ++lvl;
    }
    return {reach, lvl};
}

// One row of a range scan: what a node needs, without the record.
using Candidate = APRangeRow;

// Dates of an event as the views read them.
struct EventDays {
    PLDate first;  // day of the start
    PLTime startTime;
    PLDate lastRaw;  // day of the end stamp as stored
    PLTime endTime;
    PLDate lastDay;   // the end's day, a day earlier for an end at exactly 00:00:00
    PLDate limit;     // day of the last-occurrence stamp (repeating) or lastRaw
    PLDate reachDay;  // the last day the event or its series can touch
    bool repeating;
};

EventDays DaysOf(const Candidate& c, const APStampDecoder& decoder) {
    EventDays days;
    if (c.allDay) {
        APStampDecoder::Utc(c.start, days.first, days.startTime);
        APStampDecoder::Utc(c.end, days.lastRaw, days.endTime);
    } else {
        decoder.Local(c.start, days.first, days.startTime);
        decoder.Local(c.end, days.lastRaw, days.endTime);
    }
    days.lastDay = days.lastRaw;
    if (days.endTime == PLTime(0, 0, 0) && c.end > c.start && days.lastRaw > days.first) {
        days.lastDay = APStampDecoder::DateOf(days.lastRaw.dayNumber - 1);
    }
    if (days.lastDay < days.first) {
        days.lastDay = days.first;  // an end before the start: the event is its first day
    }
    days.repeating = APRecurrenceRule::IsRepeatingKind(c.kind);
    days.limit = days.lastRaw;
    days.reachDay = days.lastDay;
    if (days.repeating) {
        PLTime unused;
        decoder.Local(c.last, days.limit, unused);
        const int32_t span = days.lastDay - days.first;
        if (days.limit.dayNumber + span > days.reachDay.dayNumber) {
            days.reachDay = APStampDecoder::DateOf(days.limit.dayNumber + span);
        }
    }
    return days;
}

template <class Node>
Node* NewNode() {
    void* memory = ::operator new(sizeof(Node));
    std::memset(memory, 0, sizeof(Node));
    return new (memory) Node{};
}

template <class Node>
Node* Link(std::vector<Node*>& nodes) {
    for (size_t i = 0; i + 1 < nodes.size(); ++i) {
        nodes[i]->next = nodes[i + 1];
    }
    return nodes.empty() ? nullptr : nodes.front();
}

}  // namespace

struct APEventRec::Impl {
    APDatabase db;
    bool open = false;

    bool SelectCandidates(long from, long to, std::vector<Candidate>& out);
    // Appends the candidates; the first `sorted` of them come in start order already.
    bool ScanLevels(long from, long to, std::vector<Candidate>& out, size_t& sorted);
    bool ReadRecord(int id, _EventRecInfo& record);
    bool WriteRow(const _EventRecInfo& record, bool insert, int& id);
};

bool APEventRec::Impl::SelectCandidates(long from, long to, std::vector<Candidate>& out) {
    // The stamp, the long rows and the short rows are read in one snapshot, so that a write of
    // another process between them cannot mix two states of the store in one answer.
    const bool ownRead = sqlite3_get_autocommit(db.Handle()) != 0;
    if (ownRead && sqlite3_exec(db.Handle(), "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK) {
        db.NoteError("cannot start the range query");
        return false;
    }
    size_t sorted = 0;
    const bool done = ScanLevels(from, to, out, sorted);
    if (ownRead) {
        sqlite3_exec(db.Handle(), done ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr);
    }
    if (!done) {
        return false;
    }
    // The series come sorted from the cache; only the few short rows need sorting before the two
    // runs are merged.
    const auto byStart = [](const Candidate& x, const Candidate& y) {
        return x.start != y.start ? x.start < y.start : x.id < y.id;
    };
    const auto middle = out.begin() + std::ptrdiff_t(sorted);
    std::sort(middle, out.end(), byStart);
    std::inplace_merge(out.begin(), middle, out.end(), byStart);
    return true;
}

bool APEventRec::Impl::ScanLevels(long from, long to, std::vector<Candidate>& out, size_t& sorted) {
    // Per level (outer loop over the few levels in use), an index range on (lvl, start_ts) that the
    // covering index answers without touching the table. Levels from ?3 up come from the series
    // cache when it has them, with the same test applied in memory.
    static const char* const kSql =
        "SELECT e.id, e.start_ts, e.end_ts, e.last_ts, e.kind, e.a, e.b, e.colour, e.all_day "
        "FROM event_levels AS l CROSS JOIN events AS e INDEXED BY events_span "
        "WHERE l.lvl < ?3 AND e.lvl = l.lvl AND e.start_ts > ?1 - l.len AND e.start_ts < ?2 "
        "AND e.reach > ?1";
    // Asked again and again (a view's reloads): the connection keeps it prepared.
    sqlite3_stmt* const s = db.Cached(kSql);
    if (!s) {
        db.NoteError("cannot prepare the range query");
        return false;
    }
    const int64_t low = int64_t(from) - kRangeMargin;
    const int64_t high = int64_t(to) + kRangeMargin;
    const APSeriesCache::Rows series = APSeriesCache::Get(db);
    if (series) {
        for (const APSeriesRow& r : *series) {
            if (r.columns.start > low - r.len && r.columns.start < high && r.reach > low) {
                out.push_back(r.columns);
            }
        }
    }
    sorted = out.size();
    sqlite3_bind_int64(s, 1, low);
    sqlite3_bind_int64(s, 2, high);
    sqlite3_bind_int(s, 3, series ? APSeriesCache::kFirstLevel : kNoLevelLimit);
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        out.push_back(APReadRangeRow(s));
    }
    const bool done = rc == SQLITE_DONE;
    if (!done) {
        db.NoteError("range query failed");
    }
    sqlite3_reset(s);  // releases the statement's hold on the snapshot
    return done;
}

bool APEventRec::Impl::ReadRecord(int id, _EventRecInfo& record) {
    // The day query reads one record per event it shows: the connection keeps this prepared.
    sqlite3_stmt* const stmt = db.Cached("SELECT record FROM events WHERE id = ?1");
    if (!stmt) {
        return false;
    }
    sqlite3_bind_int(stmt, 1, id);
    if (sqlite3_step(stmt) != SQLITE_ROW) {
        sqlite3_reset(stmt);
        return false;
    }
    const auto* blob = static_cast<const uint8_t*>(sqlite3_column_blob(stmt, 0));
    const int size = sqlite3_column_bytes(stmt, 0);
    _EventRecInfo decoded;
    const bool intact = size > 0 && APDecodeRecord(blob, size_t(size), &decoded, sizeof decoded);
    sqlite3_reset(stmt);  // releases the snapshot; the blob is not used past here
    if (!intact) {
        db.NoteError("stored record " + std::to_string(id) + " is damaged");
        return false;
    }
    decoded.id = id;  // the row id is the record's id; the stored word is not trusted
    record = decoded;
    return true;
}

bool APEventRec::Impl::WriteRow(const _EventRecInfo& record, bool insert, int& id) {
    const DerivedColumns derived = Derive(record);
    _EventRecInfo stored = record;
    stored.id = 0;
    const std::vector<uint8_t> blob = APEncodeRecord(&stored, sizeof stored);
    const char* sql =
        insert
            ? "INSERT INTO events(start_ts, end_ts, last_ts, reach, lvl, kind, a, b, colour, "
              "all_day, alert_id, record) VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, "
              "?12)"
            : "UPDATE events SET start_ts = ?1, end_ts = ?2, last_ts = ?3, reach = ?4, lvl = ?5, "
              "kind = ?6, a = ?7, b = ?8, colour = ?9, all_day = ?10, alert_id = ?11, "
              "record = ?12 WHERE id = ?13";
    sqlite3_stmt* const s = db.Cached(sql);
    sqlite3_stmt* const level =
        db.Cached("INSERT OR IGNORE INTO event_levels(lvl, len) VALUES(?1, ?2)");
    if (!s || !level) {
        db.NoteError("cannot prepare the write");
        return false;
    }
    sqlite3_bind_int(s, 1, record.startStamp);
    sqlite3_bind_int(s, 2, record.endStamp);
    sqlite3_bind_int(s, 3, record.lastStamp);
    sqlite3_bind_int64(s, 4, derived.reach);
    sqlite3_bind_int(s, 5, derived.lvl);
    sqlite3_bind_int(s, 6, record.recurKind);
    sqlite3_bind_int(s, 7, record.recurValueA);
    sqlite3_bind_int(s, 8, record.recurValueB);
    sqlite3_bind_int64(s, 9, record.colour);
    sqlite3_bind_int(s, 10, record.allDay);
    sqlite3_bind_int(s, 11, record.alertInfoId);
    sqlite3_bind_blob(s, 12, blob.data(), int(blob.size()), SQLITE_TRANSIENT);
    if (!insert) {
        sqlite3_bind_int(s, 13, id);
    }
    const int written = sqlite3_step(s);
    sqlite3_reset(s);
    if (written != SQLITE_DONE) {
        db.NoteError("cannot write the event");
        return false;
    }
    if (insert) {
        id = int(sqlite3_last_insert_rowid(db.Handle()));
    } else if (sqlite3_changes(db.Handle()) != 1) {
        db.NoteError("no event " + std::to_string(id));
        return false;
    }
    sqlite3_bind_int(level, 1, derived.lvl);
    sqlite3_bind_int64(level, 2, int64_t(1) << derived.lvl);
    const int noted = sqlite3_step(level);
    sqlite3_reset(level);
    if (noted != SQLITE_DONE) {
        db.NoteError("cannot note the event's level");
        return false;
    }
    return true;
}

APEventRec::APEventRec() : mImpl(std::make_unique<Impl>()) {
    mImpl->open = APOpenEventStore(mImpl->db);
}

APEventRec::~APEventRec() = default;

bool APEventRec::IsOpen() const {
    return mImpl->open;
}

const std::string& APEventRec::GetLastError() const {
    return mImpl->db.GetLastError();
}

int APEventRec::AddEventRec(_EventRecInfo* record) {
    assert(record && "AddEventRec needs a record");
    if (!record || !mImpl->open) {
        return 0;
    }
    int id = 0;
    const bool ok = mImpl->db.Transaction([&] { return mImpl->WriteRow(*record, true, id); });
    return ok ? id : 0;
}

int APEventRec::AddEventRecs(const _EventRecInfo* records, int count, int* ids) {
    assert((records && ids) || count <= 0);
    if (!mImpl->open || count <= 0 || !records || !ids) {
        return 0;
    }
    const bool ok = mImpl->db.Transaction([&] {
        for (int i = 0; i < count; ++i) {
            if (!mImpl->WriteRow(records[i], true, ids[i])) {
                return false;
            }
        }
        return true;
    });
    return ok ? count : 0;
}

int APEventRec::UpdateEventRec(_EventRecInfo* record) {
    assert(record && "UpdateEventRec needs a record");
    if (!record) {
        return 0;
    }
    int id = record->id;
    const bool ok = mImpl->open && id > 0 &&
                    mImpl->db.Transaction([&] { return mImpl->WriteRow(*record, false, id); });
    if (!ok) {
        record->id = 0;
        return 0;
    }
    return id;
}

int APEventRec::GetEventRec(int id, _EventRecInfo* record) {
    assert(record && "GetEventRec needs a record");
    if (!record || !mImpl->open || id <= 0) {
        return 0;
    }
    return mImpl->ReadRecord(id, *record) ? 1 : 0;
}

int APEventRec::DeleteEventRec(int id) {
    if (!mImpl->open || id <= 0) {
        return 0;
    }
    bool removed = false;
    const bool ok = mImpl->db.Transaction([&] {
        APStatement read(mImpl->db.Handle(), "SELECT alert_id FROM events WHERE id = ?1");
        APStatement drop(mImpl->db.Handle(), "DELETE FROM events WHERE id = ?1");
        if (!read.Ok() || !drop.Ok()) {
            return false;
        }
        sqlite3_bind_int(read.Get(), 1, id);
        if (sqlite3_step(read.Get()) != SQLITE_ROW) {
            return true;  // nothing to remove
        }
        if (!APDeleteAlertAndAlarm(mImpl->db, sqlite3_column_int(read.Get(), 0))) {
            return false;
        }
        sqlite3_bind_int(drop.Get(), 1, id);
        removed = sqlite3_step(drop.Get()) == SQLITE_DONE;
        return removed;
    });
    return ok && removed ? 1 : 0;
}

int APEventRec::DeleteFinshedEventRec(long before) {
    if (!mImpl->open) {
        return -1;
    }
    int count = 0;
    const bool ok = mImpl->db.Transaction([&] {
        APStatement read(mImpl->db.Handle(),
                         "SELECT id, alert_id FROM events WHERE last_ts < ?1 ORDER BY id");
        APStatement drop(mImpl->db.Handle(), "DELETE FROM events WHERE id = ?1");
        if (!read.Ok() || !drop.Ok()) {
            return false;
        }
        sqlite3_bind_int64(read.Get(), 1, before);
        std::vector<std::pair<int, int>> finished;
        while (sqlite3_step(read.Get()) == SQLITE_ROW) {
            finished.emplace_back(sqlite3_column_int(read.Get(), 0),
                                  sqlite3_column_int(read.Get(), 1));
        }
        for (const auto& [id, alertId] : finished) {
            if (!APDeleteAlertAndAlarm(mImpl->db, alertId)) {
                return false;
            }
            sqlite3_reset(drop.Get());
            sqlite3_bind_int(drop.Get(), 1, id);
            if (sqlite3_step(drop.Get()) != SQLITE_DONE) {
                return false;
            }
            ++count;
        }
        return true;
    });
    return ok ? count : -1;
}

APMonthEventNode* APEventRec::QueryMonthEventView(long start, long end, PLBasicString<char>&) {
    std::vector<Candidate> candidates;
    if (!mImpl->open || end <= start || !mImpl->SelectCandidates(start, end, candidates)) {
        return nullptr;
    }
    const APStampDecoder decoder(start, end, kRangeMargin + kDay);
    PLDate rangeFirst;
    PLDate rangeLast;
    PLTime unused;
    decoder.Local(start, rangeFirst, unused);
    decoder.Local(end - 1, rangeLast, unused);
    std::vector<APMonthEventNode*> nodes;
    nodes.reserve(candidates.size());
    for (const Candidate& c : candidates) {
        const EventDays days = DaysOf(c, decoder);
        if (days.first > rangeLast || days.reachDay < rangeFirst) {
            continue;
        }
        auto* node = NewNode<APMonthEventNode>();
        node->firstDay = days.first;
        node->lastDay = days.lastRaw;
        node->limitDay = days.limit;
        node->startTime = days.startTime;
        node->endTime = days.endTime;
        node->recurValueA = c.a;
        node->recurValueB = c.b;
        node->recurKind = c.kind;
        node->id = c.id;
        node->colour = c.colour;
        node->allDay = c.allDay;
        nodes.push_back(node);
    }
    return Link(nodes);
}

APMonthEventNode* APEventRec::QueryWeekEventView(long start, long end, PLBasicString<char>& text) {
    return QueryMonthEventView(start, end, text);
}

namespace {

struct DayEntry {
    APDayEventNode* node;
    bool header;
    int32_t occurrenceDay;
    int secondOfDay;
};

}  // namespace

APDayEventNode* APEventRec::GetDayEventView(long start, long end, PLBasicString<char>&) {
    // One day, from its midnight to 23:59:59 (25 hours on a day that leaves daylight saving time):
    // the nodes describe the day of `start` only.
    assert(end - start <= 25 * 3600 && "the day query covers one day");
    std::vector<Candidate> candidates;
    if (!mImpl->open || end < start || !mImpl->SelectCandidates(start, end + 1, candidates)) {
        return nullptr;
    }
    const APStampDecoder decoder(start, end, kRangeMargin + kDay);
    PLDate day;
    PLTime unused;
    decoder.Local(start, day, unused);
    std::vector<DayEntry> entries;
    for (const Candidate& c : candidates) {
        const EventDays days = DaysOf(c, decoder);
        if (days.first > day || days.reachDay < day) {
            continue;
        }
        std::vector<int32_t> occurrences;  // first days of the occurrences that touch the day
        const int32_t span = std::min(days.lastDay - days.first, kLongestOccurrence);
        if (!days.repeating) {
            occurrences.push_back(days.first.dayNumber);
        } else {
            const APRecurrenceRule rule(c.kind, c.a, c.b, days.first, days.limit);
            for (int32_t back = span; back >= 0; --back) {
                const PLDate candidate = APStampDecoder::DateOf(day.dayNumber - back);
                if (rule.OccursOn(candidate)) {
                    occurrences.push_back(candidate.dayNumber);
                }
            }
        }
        if (occurrences.empty()) {
            continue;
        }
        _EventRecInfo record;
        const bool haveRecord = mImpl->ReadRecord(c.id, record);
        for (int32_t first : occurrences) {
            auto* node = NewNode<APDayEventNode>();
            node->id = c.id;
            node->firstDay = APStampDecoder::DateOf(first);
            node->lastDay = days.repeating ? APStampDecoder::DateOf(first + span) : days.lastDay;
            node->startHour = days.startTime.hour;
            node->allDay = c.allDay;
            node->repeatIcon = days.repeating ? 1 : 0;
            if (haveRecord) {
                const size_t length = strnlen(record.subject, kAPEventTextMax);
                std::memcpy(node->subject, record.subject, length);
                node->alarmIcon = record.alarm ? 1 : 0;
            }
            const bool header = c.allDay || node->firstDay != node->lastDay;
            entries.push_back({node, header, first, days.startTime.SecondsOfDay()});
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const DayEntry& x, const DayEntry& y) {
        if (x.header != y.header) {
            return x.header;
        }
        if (x.occurrenceDay != y.occurrenceDay) {
            return x.occurrenceDay < y.occurrenceDay;
        }
        if (x.secondOfDay != y.secondOfDay) {
            return x.secondOfDay < y.secondOfDay;
        }
        return x.node->id < y.node->id;
    });
    std::vector<APDayEventNode*> nodes;
    for (const DayEntry& entry : entries) {
        nodes.push_back(entry.node);
    }
    return Link(nodes);
}

std::vector<int> APEventRec::ListEventIds(long from, long to) {
    std::vector<int> ids;
    if (!mImpl->open) {
        return ids;
    }
    if (from < to) {
        PLBasicString<char> unused;
        APMonthEventNode* head = QueryMonthEventView(from, to, unused);
        for (APMonthEventNode* n = head; n; n = n->next) {
            ids.push_back(n->id);
        }
        APFreeEventNodes(head);
        return ids;
    }
    APStatement stmt(mImpl->db.Handle(), "SELECT id FROM events ORDER BY start_ts, id");
    while (stmt.Ok() && sqlite3_step(stmt.Get()) == SQLITE_ROW) {
        ids.push_back(sqlite3_column_int(stmt.Get(), 0));
    }
    return ids;
}
