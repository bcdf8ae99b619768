#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Why a server that keeps falling fell: the first line of the alarming levels ("[emerg]",
// "[alert]", "[crit]") that it wrote to its error log since its last start.
namespace serverfailure {

// The most of the log's end that is read: a huge log is read from this far before its end.
inline constexpr std::uint64_t tailLimit = 64 * 1024;

// The first such line of the bytes, without its line end; nothing when there is none or when
// the bytes are not UTF-8 (a log in another encoding has no line to show as it is).
std::optional<std::string> firstAlarmLine(std::string_view bytes);

// The size of the error log now, 0 when it is missing: where the next start's lines begin.
std::uint64_t errorLogSize();

// The lines written to the error log from offset on, at most its last tailLimit bytes; a log
// that shrank since (rotated) is read from its start. Empty when it can't be read.
std::string errorLogSince(std::uint64_t offset);

} // namespace serverfailure
