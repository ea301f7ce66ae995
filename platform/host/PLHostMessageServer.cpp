// The simulator's message socket: binding, stale-socket replacement and the receiving thread.
#include "PLHostMessageServer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

PLHostMessageServer::~PLHostMessageServer() {
    Stop();
}

bool PLHostMessageServer::ClearStale(const std::string& path, const PLHostSocketAddress& address,
                                     std::string& error) {
    int probe = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (probe < 0) {
        error = std::string("cannot make a socket: ") + std::strerror(errno);
        return false;
    }
    int result = ::connect(probe, address.Get(), address.Size());
    int why = errno;
    ::close(probe);
    if (result == 0) {
        error = "the message socket " + path + " is taken by another running process";
        return false;
    }
    if (why == ENOENT) {
        return true;
    }
    if (why != ECONNREFUSED) {
        error = "cannot check the message socket " + path + ": " + std::strerror(why);
        return false;
    }
    // Left behind by a simulator that did not end cleanly: nobody reads it any more.
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
        error = "cannot replace the stale socket " + path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool PLHostMessageServer::Start(const std::string& path, Receiver receiver, std::string& error) {
    if (mSocket >= 0) {
        error = "the message server is already running";
        return false;
    }
    PLHostSocketAddress address;
    if (!address.Set(path, error) || !ClearStale(path, address, error)) {
        return false;
    }
    int fd = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        error = std::string("cannot make a socket: ") + std::strerror(errno);
        return false;
    }
    if (::bind(fd, address.Get(), address.Size()) != 0) {
        error = "cannot listen on " + path + ": " + std::strerror(errno);
        ::close(fd);
        return false;
    }
    int stop[2];
    if (::pipe2(stop, O_CLOEXEC) != 0) {
        error = std::string("cannot make a pipe: ") + std::strerror(errno);
        ::close(fd);
        ::unlink(path.c_str());
        return false;
    }
    mPath = path;
    mReceiver = std::move(receiver);
    mSocket = fd;
    mStopRead = stop[0];
    mStopWrite = stop[1];
    mThread = std::thread([this] { Serve(); });
    return true;
}

void PLHostMessageServer::Serve() {
    std::vector<char> buffer(PLHostMessageCodec::kMaxDatagram + 1);
    for (;;) {
        pollfd entries[2] = {{mSocket, POLLIN, 0}, {mStopRead, POLLIN, 0}};
        if (::poll(entries, 2, -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            std::fprintf(stderr, "calendar-sim: message socket failed: %s\n", std::strerror(errno));
            return;
        }
        if (entries[1].revents != 0) {
            return;
        }
        ssize_t got = ::recv(mSocket, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (got < 0) {
            continue;
        }
        PLHostMessageFields fields;
        std::string why;
        if (size_t(got) > PLHostMessageCodec::kMaxDatagram) {
            why = "datagram too long";
        } else if (PLHostMessageCodec::Decode({buffer.data(), size_t(got)}, fields, why)) {
            mReceiver(fields);
            continue;
        }
        std::fprintf(stderr, "calendar-sim: ignored a malformed message on %s: %s\n", mPath.c_str(),
                     why.c_str());
    }
}

void PLHostMessageServer::Stop() {
    if (mSocket < 0) {
        return;
    }
    char byte = 1;
    [[maybe_unused]] ssize_t ignored = ::write(mStopWrite, &byte, 1);
    if (mThread.joinable()) {
        mThread.join();
    }
    ::close(mSocket);
    ::close(mStopRead);
    ::close(mStopWrite);
    ::unlink(mPath.c_str());
    mSocket = mStopRead = mStopWrite = -1;
}
