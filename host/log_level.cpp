#include "host/log_level.h"

const std::array<LogLevel, 3> LogLevelTable = {{
    {"error", "CVCP-005201"},
    {"info", "CVCP-005202"},
    {"debug", "CVCP-005203"},
}};

std::atomic<std::uint8_t> selectedLogLevel{0};

void setSelectedLogLevel(std::uint8_t index) {
    selectedLogLevel.store(index, std::memory_order_relaxed);
}
