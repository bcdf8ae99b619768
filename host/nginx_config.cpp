#include "host/nginx_config.h"

#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "host/host_facts.h"
#include "host/log_level.h"

namespace {

constexpr int loadRetries = 3;
constexpr auto retryDelay = std::chrono::milliseconds(500);
const std::string directive = "error_log";

} // namespace

NginxConfig::NginxConfig() : path(installPathOf("conf/nginx.conf")) {
    load(loadRetries);
}

void NginxConfig::load(int retries) {
    try {
        const std::vector<std::uint8_t> bytes = filesys::readFile(path, 0, 0);
        text.assign(bytes.begin(), bytes.end());
        read = true;
        split();
    } catch (const filesys::ReadFileError&) {
        if (retries <= 0) {
            level.reset();
            return;
        }
        std::this_thread::sleep_for(retryDelay);
        load(retries - 1);
    }
}

void NginxConfig::split() {
    const std::size_t a = text.find(directive);
    const std::size_t b = text.find(' ', a + directive.size());
    const std::size_t c = text.find(' ', b + 1);
    const std::size_t d = text.find(';', c + 1);
    if (d == std::string::npos) {
        before.clear();
        after.clear();
        level.reset();
        return;
    }
    before = text.substr(0, c + 1);
    after = text.substr(d);
    level = text.substr(c + 1, d - (c + 1));
}

std::string NginxConfig::currentLevel() const {
    return level.value_or(std::string());
}

int NginxConfig::writeLevel() {
    const std::uint8_t index = selectedLogLevel.load(std::memory_order_relaxed);
    if (index >= LogLevelTable.size()) {
        return Refused;
    }
    if (read && !level) {
        return Refused;
    }
    const std::string& word = LogLevelTable[index].word;
    // A file that couldn't be read is written all the same, holding the bare word.
    if (level && *level == word) {
        return Unchanged;
    }
    const std::string content = before + word + after;
    try {
        filesys::replaceFile(path, std::vector<std::uint8_t>(content.begin(), content.end()));
    } catch (const filesys::WriteFileError&) {
        return Refused;
    }
    return Written;
}
