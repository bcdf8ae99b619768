#include "host/log_level.h"

#include "foundation/messages/panel_messages.h"

const std::array<LogLevel, 3> LogLevelTable = {{
    {"error", panelmsg::logLevelErrors},
    {"info", panelmsg::logLevelInformation},
    {"debug", panelmsg::logLevelVerbose},
}};

std::atomic<std::uint8_t> selectedLogLevel{0};

void setSelectedLogLevel(std::uint8_t index) {
    selectedLogLevel.store(index, std::memory_order_relaxed);
}
