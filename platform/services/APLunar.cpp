// Lunar dates from astronomy: months begin on the day (UTC+8) of the new moon; the month holding
// the winter solstice is the eleventh; a year from one eleventh month to the next that has
// thirteen months repeats the first month in it that holds no major solar term (a multiple of 30
// degrees of solar longitude). The whole range is reckoned once into a table of month starts, which
// every lookup then searches.
#include "APLunar.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "APAstronomy.h"

namespace {

constexpr double kChinaOffsetDays = 8.0 / 24.0;

// Days since 1970-01-01 of a proleptic Gregorian date.
long DaysFromCivil(long y, long m, long d) {
    y -= m <= 2 ? 1 : 0;
    long era = (y >= 0 ? y : y - 399) / 400;
    long yoe = y - era * 400;
    long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

// The civil day in China (days since 1970-01-01) on which a moment (Julian day, UT) falls.
long ChinaDay(double jdUT) {
    return static_cast<long>(std::floor(jdUT + 0.5 + kChinaOffsetDays)) - 2440588;
}

double JulianDayOfCivil(long y, long m, long d) {
    return static_cast<double>(DaysFromCivil(y, m, d)) + 2440587.5;
}

struct MonthStart {
    long day;   // first day, days since 1970-01-01
    int year;   // lunar year
    int month;  // 1..12
    bool leap;
};

class LunarTable {
public:
    LunarTable() { Build(); }
    const std::vector<MonthStart>& Months() const { return mMonths; }

private:
    // Lunation numbers run from 1899 to 2102 (k = 0 is January 2000).
    static constexpr int kFirstLunation = -1252;
    static constexpr int kLastLunation = 1265;

    void Build() {
        for (int k = kFirstLunation; k <= kLastLunation; ++k) {
            mNewMoonDays.push_back(ChinaDay(APAstronomy::NewMoonUT(k)));
        }
        // Major solar terms from the winter solstice of 1898 to that of 2101.
        for (int year = 1898; year <= 2101; ++year) {
            for (int i = 0; i < 12; ++i) {
                double degrees = 270.0 + 30.0 * i;  // December solstice, then the following terms
                int month = 12 + i;                 // approximate calendar month of the term
                long y = year + (month - 1) / 12;
                long m = (month - 1) % 12 + 1;
                double guess = JulianDayOfCivil(y, m, 21);
                mMajorTermDays.push_back(
                    ChinaDay(APAstronomy::SolarLongitudeMoment(std::fmod(degrees, 360.0), guess)));
            }
        }
        std::sort(mMajorTermDays.begin(), mMajorTermDays.end());
        for (int year = 1898; year <= 2100; ++year) {
            AddSui(year);
        }
    }

    long SolsticeDay(int year) const {
        double guess = JulianDayOfCivil(year, 12, 21);
        return ChinaDay(APAstronomy::SolarLongitudeMoment(270.0, guess));
    }

    // Index in mNewMoonDays of the last new moon on or before `day`.
    size_t NewMoonOnOrBefore(long day) const {
        auto it = std::upper_bound(mNewMoonDays.begin(), mNewMoonDays.end(), day);
        return static_cast<size_t>(it - mNewMoonDays.begin()) - 1;
    }

    bool HasMajorTerm(long from, long to) const {
        auto it = std::lower_bound(mMajorTermDays.begin(), mMajorTermDays.end(), from);
        return it != mMajorTermDays.end() && *it < to;
    }

    // The months from the eleventh month of `year` up to the eleventh month of the next year.
    void AddSui(int year) {
        size_t first = NewMoonOnOrBefore(SolsticeDay(year));
        size_t next = NewMoonOnOrBefore(SolsticeDay(year + 1));
        bool leapSui = next - first == 13;
        bool leapTaken = false;
        int number = 11;
        int lunarYear = year;
        for (size_t i = first; i < next; ++i) {
            long start = mNewMoonDays[i];
            long end = mNewMoonDays[i + 1];
            bool leap = false;
            if (leapSui && !leapTaken && i > first && !HasMajorTerm(start, end)) {
                leap = true;
                leapTaken = true;
            } else if (i > first) {
                number = number % 12 + 1;
                if (number == 1) {
                    lunarYear = year + 1;
                }
            }
            mMonths.push_back({start, lunarYear, number, leap});
        }
    }

    std::vector<long> mNewMoonDays;
    std::vector<long> mMajorTermDays;
    std::vector<MonthStart> mMonths;
};

const LunarTable& Table() {
    // Built once, on first use; immutable afterwards, so lookups from any thread are safe.
    static const LunarTable table;
    return table;
}

bool IsValidDate(long y, long m, long d) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m < 1 || m > 12 || d < 1) {
        return false;
    }
    bool leapYear = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    int length = kDays[m - 1] + (m == 2 && leapYear ? 1 : 0);
    return d <= length;
}

}  // namespace

int new2lunar(DATES solar, DATES* lunar) {
    if (lunar == nullptr || !IsValidDate(solar.year, solar.month, solar.day)) {
        return 0;
    }
    long day = DaysFromCivil(solar.year, solar.month, solar.day);
    if (day < DaysFromCivil(1900, 1, 31) || day > DaysFromCivil(2100, 12, 31)) {
        return 0;
    }
    const std::vector<MonthStart>& months = Table().Months();
    auto it = std::upper_bound(months.begin(), months.end(), day,
                               [](long d, const MonthStart& m) { return d < m.day; });
    if (it == months.begin()) {
        return 0;
    }
    const MonthStart& month = *(it - 1);
    lunar->year = month.year;
    lunar->month = month.month;
    lunar->day = static_cast<int32_t>(day - month.day + 1);
    lunar->leapMonth = month.leap ? 1 : 0;
    return 1;
}
