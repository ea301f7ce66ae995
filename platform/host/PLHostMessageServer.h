// Receives messages from other processes on the simulator's socket (a Unix datagram socket in the
// device root) on a thread of its own, and hands each one to a callback on that thread. The
// simulator's callback posts the message to the event loop, so the application hears it on the
// event-loop thread.
#pragma once

#include <functional>
#include <string>
#include <thread>

#include "PLHostMessageCodec.h"
#include "PLHostSocketAddress.h"

class PLHostMessageServer {
public:
    using Receiver = std::function<void(const PLHostMessageFields&)>;

    PLHostMessageServer() = default;
    ~PLHostMessageServer();
    PLHostMessageServer(const PLHostMessageServer&) = delete;
    PLHostMessageServer& operator=(const PLHostMessageServer&) = delete;

    // Binds the socket at `path` and starts the thread. A socket file that nobody listens on any
    // more is replaced; one that a live process still listens on is reported as taken.
    bool Start(const std::string& path, Receiver receiver, std::string& error);
    // Stops the thread and removes the socket file. Harmless when not started.
    void Stop();
    bool IsRunning() const { return mSocket >= 0; }

private:
    void Serve();
    // `address` is `path` as the socket calls reach it.
    static bool ClearStale(const std::string& path, const PLHostSocketAddress& address,
                           std::string& error);

    std::string mPath;
    Receiver mReceiver;
    int mSocket = -1;
    int mStopRead = -1;
    int mStopWrite = -1;
    std::thread mThread;
};
