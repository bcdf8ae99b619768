// The server's "conf/nginx.conf" with arbitrary bytes, read and given a new level. Input: one byte
// whose low two bits choose the level to write (3 is no level), then the file.
//
// Nothing may fail. A file with no ";" behind the place of the level has no level and refuses a
// write; otherwise the three parts put together give the file again, and writing a level changes
// nothing but the level.

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/log_level.h"
#include "host/nginx_config.h"
#include "tests/fuzz/fuzz_check.h"
#include "tests/fuzz/fuzz_installation.h"

namespace {

const char* const configFile = "conf/nginx.conf";

bool directiveFound(const NginxConfig& config) {
    const std::size_t directive = config.text.find("error_log");
    return directive != std::string::npos &&
           config.text.find(' ', directive + 9) != std::string::npos && !config.before.empty();
}

void checkWrite(const NginxConfig& config, std::uint8_t index) {
    setSelectedLogLevel(index);
    const int result = NginxConfig(config).writeLevel();
    const std::string file = readInstallationFile(configFile);
    if (index >= LogLevelTable.size() || !config.level) {
        fuzzCheck(result == NginxConfig::Refused, "no level, no write");
        fuzzCheck(file == config.text, "a refused write leaves the file");
        return;
    }
    const std::string& word = LogLevelTable[index].word;
    if (config.currentLevel() == word) {
        fuzzCheck(result == NginxConfig::Unchanged, "the level in place is not written");
        fuzzCheck(file == config.text, "an unchanged level leaves the file");
        return;
    }
    fuzzCheck(result == NginxConfig::Written, "a new level is written");
    fuzzCheck(file == config.before + word + config.after, "only the level changes");
    // When the directive and both its blanks were found, they stand in `before` unchanged, and the
    // new word is found between them and the ";" again. Searches that wrapped past the end may
    // find other places in the new text.
    if (directiveFound(config)) {
        fuzzCheck(NginxConfig().currentLevel() == word, "the written level reads back");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzInstallation();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::uint8_t choice = data[0] & 3;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    writeInstallationFile(configFile, text);

    const NginxConfig config;
    fuzzCheck(config.text == text, "the whole file is read");
    if (config.level) {
        fuzzCheck(config.before + *config.level + config.after == text,
                  "the three parts make the file");
    } else {
        fuzzCheck(config.before.empty() && config.after.empty(), "no level, no parts");
    }
    checkWrite(config, choice == 3 ? 255 : choice);
    return 0;
}
