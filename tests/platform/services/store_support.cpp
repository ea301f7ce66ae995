// Temporary roots, record builders and file helpers for the service tests.
#include "store_support.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "APDatabase.h"
#include "PLDeviceRoot.h"
#include "PLTimeStamp.h"

void StoreRootTest::SetUp() {
    const char* zone = std::getenv("TZ");
    mSavedZone = zone ? zone : "UTC";
    UseZone("UTC");
    std::string pattern = (std::filesystem::temp_directory_path() / "store-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    mRoot = pattern;
    PLDeviceRoot::SetRoot(mRoot);
    APDatabase::ForgetChecks();
    APDatabase::SetPageQuota(0);
}

void StoreRootTest::TearDown() {
    APDatabase::SetPageQuota(0);
    PLDeviceRoot::SetRoot("");
    std::error_code ignored;
    std::filesystem::remove_all(mRoot, ignored);
    setenv("TZ", mSavedZone.c_str(), 1);
    tzset();
}

void StoreRootTest::Restart(const char* zone) {
    TearDown();
    SetUp();
    UseZone(zone);
}

void StoreRootTest::UseZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

PLDate DateOf(int ymd) {
    return PLDate(ymd / 10000, ymd / 100 % 100, ymd % 100);
}

long At(int ymd, int hour, int minute, int second) {
    const PLDate date = DateOf(ymd);
    const PLTime time(hour, minute, second);
    return PLDate2TimeStamp(&date, &time);
}

long UtcAt(int ymd, int hour, int minute, int second) {
    const PLDate date = DateOf(ymd);
    const PLTime time(hour, minute, second);
    return PLDateUTC2TimeStamp(&date, &time);
}

_EventRecInfo TimedEvent(const char* subject, long start, long end) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    std::strncpy(record.subject, subject, kAPEventTextMax);
    record.startStamp = int32_t(start);
    record.endStamp = int32_t(end);
    record.lastStamp = int32_t(end);
    record.colour = 11545;
    record.classChoice = 11561;
    return record;
}

_EventRecInfo AllDayEvent(const char* subject, int ymd, int days) {
    const long start = UtcAt(ymd);
    _EventRecInfo record = TimedEvent(subject, start, start + days * 86400L - 1);
    record.allDay = 1;
    return record;
}

void MakeRepeating(_EventRecInfo& record, int kind, int a, int b, long last, int c) {
    record.recurKind = kind;
    record.recurValueA = a;
    record.recurValueB = b;
    record.recurValueC = c;
    record.lastStamp = int32_t(last);
    record.recurring = 1;
}

std::string Stored(const char* field) {
    return std::string(field, strnlen(field, kAPEventTextSize));
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteFile(const std::string& path, const std::string& data) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << data;
}

void PrintTo(const PLDate& date, std::ostream* out) {
    *out << date.year << "-" << int(date.month) << "-" << int(date.day);
}

void PrintTo(const PLTime& time, std::ostream* out) {
    *out << int(time.hour) << ":" << int(time.minute) << ":" << int(time.second);
}
