#include "host/server_failure.h"

#include <fstream>
#include <vector>

#include "foundation/filesys.h"
#include "host/host_facts.h"

namespace serverfailure {

namespace {

constexpr const char* errorLogName = "logs/error.log";

// Only the log's tail is wanted, and the server may be writing it: the whole-file read doesn't
// fit, so the log is opened as a shared stream by its UTF-8 path.

bool isUtf8(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        std::size_t length = 0;
        if (lead < 0x80) {
            length = 1;
        } else if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
        } else {
            return false;
        }
        if (at + length > bytes.size()) {
            return false;
        }
        for (std::size_t next = 1; next < length; ++next) {
            if ((static_cast<unsigned char>(bytes[at + next]) & 0xC0) != 0x80) {
                return false;
            }
        }
        at += length;
    }
    return true;
}

bool isAlarm(std::string_view line) {
    for (const char* level : {"[emerg]", "[alert]", "[crit]"}) {
        if (line.find(level) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<std::string> firstAlarmLine(std::string_view bytes) {
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string_view::npos) {
            end = bytes.size();
        }
        std::string_view line = bytes.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (isAlarm(line)) {
            return isUtf8(line) ? std::optional<std::string>(std::string(line)) : std::nullopt;
        }
        start = end + 1;
    }
    return std::nullopt;
}

std::uint64_t errorLogSize() {
    std::ifstream log;
    if (!filesys::native::openInput(log, installPathOf(errorLogName))) {
        return 0;
    }
    log.seekg(0, std::ios::end);
    const std::streamoff size = log.tellg();
    return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

std::string errorLogSince(std::uint64_t offset) {
    std::ifstream log;
    if (!filesys::native::openInput(log, installPathOf(errorLogName))) {
        return {};
    }
    log.seekg(0, std::ios::end);
    const std::streamoff end = log.tellg();
    if (end <= 0) {
        return {};
    }
    const auto size = static_cast<std::uint64_t>(end);
    std::uint64_t from = offset <= size ? offset : 0;
    if (size - from > tailLimit) {
        from = size - tailLimit;
    }
    std::string bytes(static_cast<std::size_t>(size - from), '\0');
    log.seekg(static_cast<std::streamoff>(from));
    log.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(log.gcount()));
    return bytes;
}

} // namespace serverfailure
