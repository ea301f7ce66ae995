// Messages between applications: one JSON line per message in the device's message log, and
// delivery to the in-process listeners of the addressed application names.
#include "PLPMEClient.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "PLClock.h"
#include "PLDeviceRoot.h"
#include "PLListener.h"
#include "PLMessage.h"

namespace {

// Length of the valid UTF-8 sequence at text[i], or 0 when it is invalid (bad lead byte, missing
// or wrong continuation, overlong form, surrogate, or past U+10FFFF).
size_t ValidSequenceLength(std::string_view text, size_t i) {
    const auto byte = [&text](size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead < 0x80) {
        return 1;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (i + length > text.size()) {
        return 0;
    }
    // The first continuation byte carries the range limits; the others are plain 80..BF.
    if (byte(i + 1) < low || byte(i + 1) > high) {
        return 0;
    }
    for (size_t k = 2; k < length; ++k) {
        if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) {
            return 0;
        }
    }
    return length;
}

void AppendEscapedChar(std::string& out, char c) {
    switch (c) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        case '\b':
            out += "\\b";
            return;
        case '\f':
            out += "\\f";
            return;
        default:
            break;
    }
    if (static_cast<unsigned char>(c) < 0x20) {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "\\u%04x", static_cast<unsigned>(c));
        out += buffer;
    } else {
        out += c;
    }
}

// A JSON string literal of the text; every invalid UTF-8 byte becomes U+FFFD.
std::string JsonString(std::string_view text) {
    std::string out = "\"";
    for (size_t i = 0; i < text.size();) {
        const size_t length = ValidSequenceLength(text, i);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            ++i;
        } else if (length == 1) {
            AppendEscapedChar(out, text[i]);
            ++i;
        } else {
            out.append(text.substr(i, length));
            i += length;
        }
    }
    out += '"';
    return out;
}

std::string LocalTimeText(int64_t seconds) {
    const std::time_t moment = std::time_t(seconds);
    std::tm fields{};
    char buffer[64] = "";
    if (localtime_r(&moment, &fields) != nullptr) {
        std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &fields);
    }
    return buffer;
}

std::string LogLine(const PLMessage& message) {
    const int64_t now = PLClock::Now();
    std::string line = "{\"time\":" + JsonString(LocalTimeText(now));
    line += ",\"stamp\":" + std::to_string(now);
    line += ",\"id\":" + std::to_string(message.GetMessageID());
    line += ",\"sender\":" + std::to_string(message.GetSenderID());
    line += ",\"value\":" + std::to_string(message.GetUserMessageID());
    line += ",\"strings\":[" + JsonString(message.GetRecipientName().view()) + "," +
            JsonString(message.GetSenderName().view()) + "]}\n";
    return line;
}

// One write() on an O_APPEND descriptor, so that lines of other processes never interleave.
bool AppendLine(const std::string& path, const std::string& line) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        return false;
    }
    size_t written = 0;
    while (written < line.size()) {
        const ssize_t n = ::write(fd, line.data() + written, line.size() - written);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            ::close(fd);
            return false;
        }
        written += size_t(n);
    }
    return ::close(fd) == 0;
}

}  // namespace

PLPMEClient* PLPMEClient::GetInstance() {
    // Never destroyed: listeners and other static objects may still broadcast at exit.
    static PLPMEClient* const instance = new PLPMEClient();
    return instance;
}

void PLPMEClient::AppendToLog(const PLMessage& message) {
    const bool ok = PLDeviceRoot::MakeParentDirectories(LogPath()) &&
                    AppendLine(PLDeviceRoot::Resolve(LogPath()), LogLine(message));
    if (!ok && !mLogFailureReported) {
        mLogFailureReported = true;
        std::fprintf(stderr, "PLPMEClient: cannot write the message log %s: %s\n",
                     PLDeviceRoot::Resolve(LogPath()).c_str(), std::strerror(errno));
    }
}

bool PLPMEClient::IsRegistered(const PLListener* listener) const {
    return std::any_of(mListeners.begin(), mListeners.end(),
                       [listener](const auto& entry) { return entry.second == listener; });
}

void PLPMEClient::BroadcastMessage(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    AppendToLog(*message);

    const std::string recipient = message->GetRecipientName().str();
    const std::string sender = message->GetSenderName().str();
    const bool everyone = recipient.empty() && sender.empty();
    std::vector<PLListener*> targets;
    for (const auto& [name, listener] : mListeners) {
        const bool addressed = everyone || (!name.empty() && (name == recipient || name == sender));
        if (addressed && std::find(targets.begin(), targets.end(), listener) == targets.end()) {
            targets.push_back(listener);
        }
    }
    // A listener may unregister itself or others while we deliver; skip those that left.
    for (PLListener* listener : targets) {
        if (IsRegistered(listener)) {
            listener->Listen(message);
        }
    }
}

void PLPMEClient::RegisterListener(const std::string& applicationName, PLListener* listener) {
    if (listener == nullptr) {
        return;
    }
    const auto range = mListeners.equal_range(applicationName);
    for (auto it = range.first; it != range.second; ++it) {
        if (it->second == listener) {
            return;
        }
    }
    mListeners.emplace(applicationName, listener);
}

void PLPMEClient::UnregisterListener(PLListener* listener) {
    for (auto it = mListeners.begin(); it != mListeners.end();) {
        it = it->second == listener ? mListeners.erase(it) : std::next(it);
    }
}
