// Placeholder substitution with arbitrary templates and arguments. Input: one byte whose low five
// bits say which of the arguments %1 to %5 are given (the others are null), then the template and
// the arguments, each ended by a zero byte; missing parts are empty.
//
// Every input is substituted and its result held to the cap: the template's length plus 4 KiB per
// given argument. The result is also checked against the former rule, which searched the whole
// text again after each replacement and is kept here within a budget: where it ended with every
// pass inside the cap, the result is the same; where a pass of it went past the cap and no argument
// rebuilds its own placeholder, the result is cut to the cap and ends in the ellipsis.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/message_catalogue.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

constexpr int maxReplacements = 1 << 14;
const std::string ellipsis = "\xE2\x80\xA6";

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

// How the former rule ended: every pass inside the cap, a pass past the cap, or out of budget.
enum class Former { within, pastCap, outOfBudget };

Former formerPass(std::string& text, const std::string& mark, const std::string& argument,
                  std::size_t cap) {
    int replacements = 0;
    while (!text.empty()) {
        const std::size_t at = text.find(mark);
        if (at == std::string::npos) {
            break;
        }
        text.replace(at, mark.size(), argument);
        if (text.size() > cap) {
            return Former::pastCap;
        }
        if (++replacements > maxReplacements) {
            return Former::outOfBudget;
        }
    }
    return Former::within;
}

// Whether the former rule would never have ended on this argument once it replaced anything.
bool rebuildsItsPlaceholder(const std::string& argument, const std::string& mark) {
    const std::string twice(2, mark.back());
    return argument.find(mark) != std::string::npos ||
           (argument.starts_with(twice) && argument.ends_with("%%"));
}

const char* argumentOf(const Input& input, int index) {
    return input.arguments[index] ? input.arguments[index]->c_str() : nullptr;
}

void checkAgainstTheFormerRule(const Input& input, const std::string& result, std::size_t cap) {
    std::string former = input.pattern;
    bool rebuilds = false;
    for (int index = 0; index < 5; ++index) {
        if (!input.arguments[index]) {
            continue;
        }
        const std::string mark = placeholder(index + 1);
        const std::string& argument = *input.arguments[index];
        rebuilds = rebuilds || rebuildsItsPlaceholder(argument, mark);
        const Former outcome = formerPass(former, mark, argument, cap);
        if (outcome == Former::pastCap && !rebuilds) {
            fuzzCheck(result.size() + 3 >= cap && result.ends_with(ellipsis),
                      "a text past its cap is cut there and ends in the ellipsis");
            return;
        }
        if (outcome != Former::within || rebuilds) {
            return;
        }
    }
    fuzzCheck(result == former, "within the cap the passes give what the former rule gave");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = readInput(data, size);
    const char* a[5] = {};
    for (int index = 0; index < 5; ++index) {
        a[index] = argumentOf(input, index);
    }
    const std::size_t cap = substitutionCap(input.pattern, a[0], a[1], a[2], a[3], a[4]);
    const std::string result = substitutePlaceholders(input.pattern, a[0], a[1], a[2], a[3], a[4]);
    fuzzCheck(result.size() <= cap, "the text never grows past its cap");
    if (input.pattern.find('%') == std::string::npos) {
        fuzzCheck(result == input.pattern, "a template without placeholders stands as it is");
    }
    checkAgainstTheFormerRule(input, result, cap);
    return 0;
}
