// Messages between applications. Every broadcast is appended as one JSON line to the device's
// message log ("/var/log/messages.jsonl" under the device root) and handed to the in-process
// listeners registered for the addressed application names.
#pragma once

#include <map>
#include <string>
#include <vector>

class PLListener;
class PLMessage;

class PLPMEClient {
public:
    static PLPMEClient* GetInstance();

    // Logs the message and delivers it to the listeners of the names it carries (its recipient and
    // sender names; a message without names reaches every registered listener).
    void BroadcastMessage(PLMessage* message);
    // Only appends the message to the log: for senders that carry it to another process
    // themselves (calendar-ctl, the simulator's own `send`), so it is not also delivered here.
    void LogMessage(const PLMessage& message) { AppendToLog(message); }
    // In-process delivery: `listener` hears messages addressed to `applicationName`.
    void RegisterListener(const std::string& applicationName, PLListener* listener);
    // Removes every registration of `listener`. A listener must unregister before it is destroyed.
    void UnregisterListener(PLListener* listener);

    // The device path of the log.
    static const char* LogPath() { return "/var/log/messages.jsonl"; }

private:
    PLPMEClient() = default;
    void AppendToLog(const PLMessage& message);
    bool IsRegistered(const PLListener* listener) const;

    std::multimap<std::string, PLListener*> mListeners;
    // A log that cannot be written is reported once, not on every message.
    bool mLogFailureReported = false;
};
