#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

// One level of the server's error log: the word in nginx.conf and the catalogue id of its name
// in the log level box.
struct LogLevel {
    std::string word;
    const char* textId;
};

// The levels in the order of the log level box: "error", "info", "debug".
extern const std::array<LogLevel, 3> LogLevelTable;

// The index last chosen in the log level box, 0 at start. Anything above 2, such as a box without
// a selection, is no level. Written by the interface thread before a worker reads it.
extern std::atomic<std::uint8_t> selectedLogLevel;

void setSelectedLogLevel(std::uint8_t index);
