// Placeholder substitution with arbitrary templates and arguments. Input: one byte whose low five
// bits say which of the arguments %1 to %5 are given (the others are null), then the template and
// the arguments, each ended by a zero byte; missing parts are empty.
//
// Two kinds of input are left out. An argument that holds its own placeholder never finishes: the
// search starts afresh after each replacement, and no caller passes such words. And since an
// argument may hold later placeholders, a few bytes can grow into gigabytes; a plain model of the
// replacing, which gives up past a budget, keeps those out and gives the expected result.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/message_catalogue.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

constexpr std::size_t maxResultSize = 64 * 1024;
constexpr int maxReplacements = 4096;

struct Input {
    std::string pattern;
    std::optional<std::string> arguments[5];
};

Input readInput(const std::uint8_t* data, std::size_t size) {
    Input input;
    if (size == 0) {
        return input;
    }
    const std::uint8_t given = data[0];
    std::vector<std::string> parts(6);
    std::size_t part = 0;
    for (std::size_t i = 1; i < size && part < parts.size(); ++i) {
        if (data[i] == 0) {
            ++part;
        } else {
            parts[part] += static_cast<char>(data[i]);
        }
    }
    input.pattern = parts[0];
    for (int i = 0; i < 5; ++i) {
        if ((given >> i) & 1) {
            input.arguments[i] = parts[i + 1];
        }
    }
    return input;
}

std::string placeholder(int number) {
    return "%" + std::to_string(number);
}

bool holdsOwnPlaceholder(const Input& input) {
    for (int i = 0; i < 5; ++i) {
        if (input.arguments[i] &&
            input.arguments[i]->find(placeholder(i + 1)) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// The replacing as the catalogue describes it, within the budget; empty when past it.
std::optional<std::string> model(const Input& input) {
    std::string result = input.pattern;
    int replacements = 0;
    for (int i = 0; i < 5; ++i) {
        if (!input.arguments[i]) {
            continue;
        }
        const std::string mark = placeholder(i + 1);
        for (std::size_t at = result.find(mark); at != std::string::npos; at = result.find(mark)) {
            result.replace(at, mark.size(), *input.arguments[i]);
            if (++replacements > maxReplacements || result.size() > maxResultSize) {
                return std::nullopt;
            }
        }
    }
    return result;
}

const char* argumentOf(const Input& input, int index) {
    return input.arguments[index] ? input.arguments[index]->c_str() : nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = readInput(data, size);
    if (holdsOwnPlaceholder(input)) {
        return -1;
    }
    const std::optional<std::string> expected = model(input);
    if (!expected) {
        return -1;
    }
    const std::string result =
        substitutePlaceholders(input.pattern, argumentOf(input, 0), argumentOf(input, 1),
                               argumentOf(input, 2), argumentOf(input, 3), argumentOf(input, 4));
    fuzzCheck(result == *expected, "substitution follows the replacing rules");
    if (input.pattern.find('%') == std::string::npos) {
        fuzzCheck(result == input.pattern, "a template without placeholders stands as it is");
    }
    return 0;
}
