// Stamp to date conversions with a cached UTC offset (see the header).
#include "APStampDecoder.h"

#include <cstdlib>
#include <ctime>
#include <string>
#include <unordered_map>

namespace {

// Days from 1970-01-01 to a proleptic Gregorian date, and back (era-based arithmetic on 400-year
// cycles of 146097 days).
constexpr int64_t UnixDayOf(int64_t y, int64_t m, int64_t d) {
    y -= m <= 2 ? 1 : 0;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

// The day number of 1970-01-01: the platform counts from 0001-01-03 (a Wednesday).
constexpr int64_t kUnixDayZero = UnixDayOf(1970, 1, 1) - UnixDayOf(1, 1, 3);
static_assert((kUnixDayZero + 3) % 7 + 1 == 5, "1970-01-01 was a Thursday");

void CivilOf(int64_t unixDay, int& year, int& month, int& day) {
    const int64_t z = unixDay + 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    day = int(doy - (153 * mp + 2) / 5 + 1);
    month = int(mp < 10 ? mp + 3 : mp - 9);
    year = int(yoe + era * 400 + (month <= 2 ? 1 : 0));
}

int64_t FloorDiv(int64_t a, int64_t b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// Offsets of whole hours this thread has asked for, for the zone named by TZ when they were asked
// (tests and the fuzzer change it). Offsets change on hour or half-hour boundaries, so an hour
// whose first and last second agree has one offset throughout; other hours are not remembered.
class HourOffsets {
public:
    static constexpr size_t kMaxHours = 1 << 16;

    // Forgets everything when TZ names another zone than before.
    void FollowZone() {
        const char* zone = std::getenv("TZ");
        const bool set = zone != nullptr;
        if (set != mZoneSet || (set && mZone != zone)) {
            mHours.clear();
            mZoneSet = set;
            mZone = set ? zone : "";
        }
    }

    bool Find(int64_t hour, long& offset) const {
        const auto found = mHours.find(hour);
        if (found == mHours.end()) {
            return false;
        }
        offset = found->second;
        return true;
    }

    void Keep(int64_t hour, long offset) {
        if (mHours.size() >= kMaxHours) {
            mHours.clear();
        }
        mHours.emplace(hour, offset);
    }

private:
    bool mZoneSet = false;
    std::string mZone;
    std::unordered_map<int64_t, long> mHours;
};

thread_local HourOffsets tHourOffsets;

}  // namespace

int32_t APStampDecoder::DayNumberOfUnixDay(int64_t unixDay) {
    return int32_t(unixDay + kUnixDayZero);
}

PLDate APStampDecoder::DateOf(int32_t dayNumber) {
    int year = 0;
    int month = 0;
    int day = 0;
    CivilOf(int64_t(dayNumber) - kUnixDayZero, year, month, day);
    PLDate date;
    date.dayNumber = dayNumber;
    date.year = uint16_t(year);
    date.month = uint8_t(month);
    date.day = uint8_t(day);
    return date;
}

long APStampDecoder::OffsetAt(long stamp) {
    const time_t moment = time_t(stamp);
    std::tm fields{};
    if (localtime_r(&moment, &fields) == nullptr) {
        return 0;
    }
    return fields.tm_gmtoff;
}

long APStampDecoder::RememberedOffsetAt(long stamp) {
    const int64_t hour = FloorDiv(stamp, 3600);
    long offset = 0;
    if (tHourOffsets.Find(hour, offset)) {
        return offset;
    }
    offset = OffsetAt(long(hour * 3600));
    if (OffsetAt(long(hour * 3600 + 3599)) != offset) {
        return OffsetAt(stamp);  // the offset changes within this hour
    }
    tHourOffsets.Keep(hour, offset);
    return offset;
}

APStampDecoder::APStampDecoder(long rangeStart, long rangeEnd, long margin) {
    tHourOffsets.FollowZone();
    const int64_t from = int64_t(rangeStart) - margin;
    const int64_t to = int64_t(rangeEnd) + margin;
    const long first = OffsetAt(long(from));
    // Checking the middle as well catches a change and its return inside one window.
    if (first == OffsetAt(long((from + to) / 2)) && first == OffsetAt(long(to))) {
        mWindowStart = from;
        mWindowEnd = to;
        mOffset = first;
    }
}

void APStampDecoder::FromLocalSeconds(int64_t seconds, PLDate& date, PLTime& time) {
    const int64_t unixDay = FloorDiv(seconds, 86400);
    const int64_t secondOfDay = seconds - unixDay * 86400;
    date = DateOf(DayNumberOfUnixDay(unixDay));
    time = PLTime(int(secondOfDay / 3600), int(secondOfDay / 60 % 60), int(secondOfDay % 60));
}

void APStampDecoder::Local(long stamp, PLDate& date, PLTime& time) const {
    if (stamp >= mWindowStart && stamp <= mWindowEnd) {
        FromLocalSeconds(int64_t(stamp) + mOffset, date, time);
        return;
    }
    FromLocalSeconds(int64_t(stamp) + RememberedOffsetAt(stamp), date, time);
}

void APStampDecoder::Utc(long stamp, PLDate& date, PLTime& time) {
    FromLocalSeconds(int64_t(stamp), date, time);
}
