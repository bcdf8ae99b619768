// Placeholder substitution with arbitrary templates and arguments. Input: one byte whose low five
// bits say which of the arguments %1 to %5 are given (the others are null), then the template and
// the arguments, each ended by a zero byte; missing parts are empty.
//
// The passes are checked one by one against the former rule, which searched the whole text again
// after each replacement and is kept here within a budget: wherever it ended, the result is the
// same. Where it went past the budget, an argument that would have been replaced without end is
// inserted once per placeholder of the text before it, each occurrence taking at least one
// character of that text, so the pass's result is at most that text's length times the argument's
// length less one. An argument that rebuilds no placeholder of its own may still grow a few bytes
// into gigabytes, and does so as it always did; the checking of such an input ends there, as it
// does where the bound itself passes the budget.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/message_catalogue.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

constexpr std::size_t maxResultSize = 16 * 1024;
constexpr int maxReplacements = 1024;

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

// The former rule on one pass, within the budget; empty when past it.
std::optional<std::string> formerPass(std::string text, const std::string& mark,
                                      const std::string& argument) {
    int replacements = 0;
    while (!text.empty()) {
        const std::size_t at = text.find(mark);
        if (at == std::string::npos) {
            break;
        }
        text.replace(at, mark.size(), argument);
        if (++replacements > maxReplacements || text.size() > maxResultSize) {
            return std::nullopt;
        }
    }
    return text;
}

// Whether the former rule would never have ended on this argument once it replaced anything.
bool rebuildsItsPlaceholder(const std::string& argument, const std::string& mark) {
    const std::string twice(2, mark.back());
    return argument.find(mark) != std::string::npos ||
           (argument.starts_with(twice) && argument.ends_with("%%"));
}

std::string onePass(const std::string& text, int index, const std::string& argument) {
    const char* arguments[5] = {};
    arguments[index] = argument.c_str();
    return substitutePlaceholders(text, arguments[0], arguments[1], arguments[2], arguments[3],
                                  arguments[4]);
}

// The pass's result, checked; empty when it can't be run in reasonable room.
std::optional<std::string> checkedPass(const std::string& text, int index,
                                       const std::string& argument) {
    const std::string mark = placeholder(index + 1);
    const std::optional<std::string> former = formerPass(text, mark, argument);
    if (former) {
        const std::string result = onePass(text, index, argument);
        fuzzCheck(result == *former, "a pass gives what the former rule gave where it ended");
        return result;
    }
    const std::size_t bound = text.size() * (argument.size() - 1);
    if (!rebuildsItsPlaceholder(argument, mark) || bound > maxResultSize) {
        return std::nullopt;
    }
    const std::string result = onePass(text, index, argument);
    fuzzCheck(result.size() <= bound,
              "an argument replaced without end before is inserted once per placeholder");
    return result;
}

const char* argumentOf(const Input& input, int index) {
    return input.arguments[index] ? input.arguments[index]->c_str() : nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = readInput(data, size);
    std::string expected = input.pattern;
    for (int index = 0; index < 5; ++index) {
        if (!input.arguments[index]) {
            continue;
        }
        const std::optional<std::string> pass =
            checkedPass(expected, index, *input.arguments[index]);
        if (!pass) {
            return 0;
        }
        expected = *pass;
    }
    const std::string result =
        substitutePlaceholders(input.pattern, argumentOf(input, 0), argumentOf(input, 1),
                               argumentOf(input, 2), argumentOf(input, 3), argumentOf(input, 4));
    fuzzCheck(result == expected, "the passes run in rising order, each on the one before");
    if (input.pattern.find('%') == std::string::npos) {
        fuzzCheck(result == input.pattern, "a template without placeholders stands as it is");
    }
    return 0;
}
