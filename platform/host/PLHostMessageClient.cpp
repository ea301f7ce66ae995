// Client side of the simulator's message socket.
#include "PLHostMessageClient.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "PLHostMessageCodec.h"
#include "PLHostSocketAddress.h"

bool PLHostSendMessage(const std::string& deviceRoot, uint32_t messageID, uint32_t a, uint32_t b,
                       const std::string& s1, const std::string& s2, std::string& error) {
    PLHostMessageFields fields{messageID, a, b, s1, s2};
    std::string datagram;
    if (!PLHostMessageCodec::Encode(fields, datagram)) {
        error = "message strings are too long (at most " +
                std::to_string(PLHostMessageCodec::kMaxStringLength) + " bytes each)";
        return false;
    }
    std::string path = PLHostMessageCodec::SocketPath(deviceRoot);
    PLHostSocketAddress address;
    int addressError = 0;
    if (!address.Set(path, error, &addressError)) {
        if (addressError == ENOENT) {
            error = "no simulator is running on " + deviceRoot;
        }
        return false;
    }
    int fd = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        error = std::string("cannot make a socket: ") + std::strerror(errno);
        return false;
    }
    ssize_t sent = ::sendto(fd, datagram.data(), datagram.size(), 0, address.Get(), address.Size());
    int why = errno;
    ::close(fd);
    if (sent == ssize_t(datagram.size())) {
        return true;
    }
    if (sent >= 0) {
        error = "message cut short on " + path;
    } else if (why == ENOENT || why == ECONNREFUSED) {
        error = "no simulator is running on " + deviceRoot;
    } else {
        error = "cannot send to " + path + ": " + std::strerror(why);
    }
    return false;
}
