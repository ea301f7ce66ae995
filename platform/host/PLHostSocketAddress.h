// The Unix-socket address of a file path, however deep the path lies.
//
// A socket address holds at most 107 bytes of path, and device roots under a build tree or a
// CI checkout easily go past that. A long path is therefore reached through its directory:
// the directory is opened and the socket named "/proc/self/fd/<n>/<file>", which the kernel
// resolves like any other path while the descriptor stays open, i.e. for this object's life.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <string>

class PLHostSocketAddress {
public:
    PLHostSocketAddress() = default;
    ~PLHostSocketAddress();
    PLHostSocketAddress(const PLHostSocketAddress&) = delete;
    PLHostSocketAddress& operator=(const PLHostSocketAddress&) = delete;

    // False with a one-line reason when the path has no file name or its directory cannot be
    // opened (a missing directory is reported as ENOENT in `errorNumber`, so that a caller
    // can tell "nobody there" from a real failure).
    bool Set(const std::string& path, std::string& error, int* errorNumber = nullptr);

    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&mAddress); }
    socklen_t Size() const { return sizeof(mAddress); }

private:
    bool Fill(const std::string& text);

    sockaddr_un mAddress{};
    int mDirectory = -1;
};
