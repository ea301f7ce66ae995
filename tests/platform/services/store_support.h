// Helpers for the service tests: a temporary device root per test, stamps in a chosen zone,
// records built field by field and whole-file reads and writes.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "APEventRecords.h"
#include "PLDate.h"
#include "PLDeviceRoot.h"
#include "PLTime.h"

// Gives each test a fresh device root and TZ, and removes the root afterwards.
class StoreRootTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // A fresh root for the next row of a table, in `zone`.
    void Restart(const char* zone = "UTC");
    // Switches the zone for the rest of the test (restored in TearDown).
    void UseZone(const char* zone);
    const std::string& Root() const { return mRoot; }
    // The host path of a device path under the test root.
    std::string HostPath(const std::string& path) const { return PLDeviceRoot::Resolve(path); }

private:
    std::string mRoot;
    std::string mSavedZone;
};

// Dates are written YYYYMMDD. The local stamp of a date and time, and the UTC one (the coding of
// all-day events).
PLDate DateOf(int ymd);
long At(int ymd, int hour = 0, int minute = 0, int second = 0);
long UtcAt(int ymd, int hour = 0, int minute = 0, int second = 0);

// Fills a fixed-size record field the way the stores read it: the text's bytes, as many as fit,
// then zeros; a text as long as the field leaves no terminator, which the records allow.
template <std::size_t N>
void FillFixedField(char (&field)[N], const char* text) {
    const std::size_t length = std::min(std::strlen(text), N);
    std::memcpy(field, text, length);
    std::memset(field + length, 0, N - length);
}

// A timed, non-repeating event with a subject.
_EventRecInfo TimedEvent(const char* subject, long start, long end);
// An all-day event over the given dates, coded as UTC like the form does.
_EventRecInfo AllDayEvent(const char* subject, int ymd, int days = 1);
// Turns an event into a repeating one.
void MakeRepeating(_EventRecInfo& record, int kind, int a, int b, long last, int c = 0xFFFFF);
// A text field as stored: up to its size, without the padding.
std::string Stored(const char* field);

// Whole files on the host ("" when missing).
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& data);

// Readable dates and times in failure messages.
void PrintTo(const PLDate& date, std::ostream* out);
void PrintTo(const PLTime& time, std::ostream* out);
