// The server's pid file with arbitrary bytes. The reader takes the text as std::stoul does, up to a
// zero byte, but refuses a sign, and accepts only what fits in 32 bits; it fails with the standard
// classes and the words the user sees on every system. A plain model of that reading gives the
// expected outcome.

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/host_facts.h"
#include "host/host_files.h"
#include "tests/fuzz/fuzz_check.h"
#include "tests/fuzz/fuzz_installation.h"

namespace {

enum class Outcome { Number, Invalid, OutOfRange };

struct Expected {
    Outcome outcome;
    std::uint32_t pid;
};

// Blanks, then at least one decimal digit; a sign is text without a number.
Expected model(std::string_view bytes) {
    const std::string_view text = bytes.substr(0, bytes.find('\0'));
    std::size_t at = 0;
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) {
        ++at;
    }
    if (at >= text.size() || !std::isdigit(static_cast<unsigned char>(text[at]))) {
        return {Outcome::Invalid, 0};
    }
    constexpr unsigned long widest = std::numeric_limits<unsigned long>::max();
    unsigned long value = 0;
    for (; at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])); ++at) {
        const unsigned digit = static_cast<unsigned>(text[at] - '0');
        if (value > (widest - digit) / 10) {
            return {Outcome::OutOfRange, 0};
        }
        value = value * 10 + digit;
    }
    if (value > std::numeric_limits<std::uint32_t>::max()) {
        return {Outcome::OutOfRange, 0};
    }
    return {Outcome::Number, static_cast<std::uint32_t>(value)};
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzInstallation();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    writeInstallationFile(pidFileName, bytes);
    const Expected expected = model(bytes);
    try {
        const std::uint32_t pid = readServerPid();
        fuzzCheck(expected.outcome == Outcome::Number && expected.pid == pid,
                  "readServerPid reads the number that the file holds");
    } catch (const std::invalid_argument& failure) {
        fuzzCheck(expected.outcome == Outcome::Invalid, "only a text without digits is invalid");
        fuzzCheck(std::string(failure.what()) == "invalid stoul argument", "invalid words");
    } catch (const std::out_of_range& failure) {
        fuzzCheck(expected.outcome == Outcome::OutOfRange, "only a number past 32 bits is too big");
        fuzzCheck(std::string(failure.what()) == "stoul argument out of range", "range words");
    }
    return 0;
}
