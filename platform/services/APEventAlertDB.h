// The alert store: one _EventAlertInfo per event that has an alarm, kept beside the events.
//
// Made on the stack for one operation, like the event store. Results: 1 (or the new id) on
// success, 0 or less on failure.
#pragma once

#include <memory>
#include <string>

#include "APEventRecords.h"

class APEventAlertDB {
public:
    APEventAlertDB();
    ~APEventAlertDB();
    APEventAlertDB(const APEventAlertDB&) = delete;
    APEventAlertDB& operator=(const APEventAlertDB&) = delete;

    bool IsOpen() const;
    const std::string& GetLastError() const;

    // Stores a new alert record, writes its id (> 0) at offset 0 and returns it; 0 on failure.
    int Add(_EventAlertInfo* info);
    // Rewrites the record with the id at offset 0; 1 on success, 0 when there is none or the
    // write failed.
    int UpdateAlertInfo(_EventAlertInfo* info);
    // Fills `info`; 1 when found, 0 otherwise (info untouched).
    int GetEventAlertInfo(int id, _EventAlertInfo* info);
    // Removes the record and unregisters the daemon alarm it names; 1 when one was removed.
    int Delete(int id);

private:
    struct Impl;
    std::unique_ptr<Impl> mImpl;
};
