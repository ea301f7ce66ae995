// The simulator's hold on a device root: the directory is made on first use, locked so that a
// second simulator cannot run on it at the same time, and populated with what the platform's
// programs and services need (resource file, settings, stores).
#pragma once

#include <string>

class PLHostDevice {
public:
    PLHostDevice() = default;
    ~PLHostDevice();
    PLHostDevice(const PLHostDevice&) = delete;
    PLHostDevice& operator=(const PLHostDevice&) = delete;

    // Makes the root (an absolute directory) and takes its lock. False with one line saying why:
    // unwritable, or in use by another simulator.
    bool Open(const std::string& root, std::string& error);
    // Fills a fresh root and refreshes the program files of an old one; data is never touched.
    bool Populate(std::string& error);
    // Releases the lock.
    void Close();
    const std::string& GetRoot() const { return mRoot; }

    static constexpr const char* kRunDirectory = "/run";
    static constexpr const char* kLockFile = "/run/calendar-sim.lock";

private:
    bool PopulateFromInstall(std::string& error);

    std::string mRoot;
    int mLockFD = -1;
};
