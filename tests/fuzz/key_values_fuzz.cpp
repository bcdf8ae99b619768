// Key-value and list parsing of arbitrary text, as the settings file and the host facts are read.
// Input: one byte of separator (it also serves as the list's delimiter), one byte of flags, then
// the text, which the parsers read up to its first zero byte. Each result is compared with a plain
// model of the cutting rules written here, and with the properties that callers rely on.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "foundation/text.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

bool isBlank(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 1 && byte <= 32;
}

// Pieces as a line reader gives them: a last piece without delimiter counts, a delimiter at the
// very end adds no empty piece.
std::vector<std::string> modelPieces(const std::string& text, char delimiter) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find(delimiter, start);
        if (end == std::string::npos) {
            pieces.push_back(text.substr(start));
            break;
        }
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

std::map<std::string, std::string> modelKeyValues(const std::string& text, char separator,
                                                  bool trimBoth) {
    std::map<std::string, std::string> result;
    for (const std::string& line : modelPieces(text, '\n')) {
        const std::size_t at = line.find(separator);
        if (at == std::string::npos) {
            continue;
        }
        const std::string key = line.substr(0, at);
        const std::string value = line.substr(at + 1);
        result[trimBoth ? trim(key) : key] = trimBoth ? trim(value) : value;
    }
    return result;
}

std::vector<std::string> modelSplit(const std::string& text, char delimiter, bool trimTokens,
                                    bool unique) {
    std::vector<std::string> result;
    for (const std::string& piece : modelPieces(text, delimiter)) {
        const std::string token = trimTokens ? trim(piece) : piece;
        if (trim(piece).empty() ||
            (unique && std::find(result.begin(), result.end(), token) != result.end())) {
            continue;
        }
        result.push_back(token);
    }
    return result;
}

void checkTrim(const std::string& text) {
    const std::string trimmed = trim(text);
    fuzzCheck(trimmed.empty() || (!isBlank(trimmed.front()) && !isBlank(trimmed.back())),
              "trim leaves no blank at either end");
    fuzzCheck(text.find(trimmed) != std::string::npos, "trim gives a part of its input");
    fuzzCheck(trim(trimmed) == trimmed, "trim of a trimmed text changes nothing");
}

void checkKeyValues(const std::string& text, char separator, bool trimBoth) {
    const auto entries = parseKeyValues(text.c_str(), separator, trimBoth);
    for (const auto& [key, value] : entries) {
        fuzzCheck(key.find('\n') == std::string::npos && value.find('\n') == std::string::npos,
                  "no key or value spans a line feed");
        fuzzCheck(key.find(separator) == std::string::npos, "only the first separator counts");
    }
    fuzzCheck(entries == modelKeyValues(text, separator, trimBoth),
              "parseKeyValues follows the line and separator rules");
}

void checkSplit(const std::string& text, char delimiter, bool trimTokens, bool unique) {
    const auto tokens = splitText(text.c_str(), delimiter, trimTokens, unique);
    for (const std::string& token : tokens) {
        fuzzCheck(!trim(token).empty(), "splitText drops blank pieces");
        fuzzCheck(token.find(delimiter) == std::string::npos, "no token holds the delimiter");
        fuzzCheck(!trimTokens || trim(token) == token, "trimmed tokens have no blanks at the ends");
    }
    fuzzCheck(tokens == modelSplit(text, delimiter, trimTokens, unique),
              "splitText follows the cutting rules");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const auto separator = static_cast<char>(data[0]);
    const std::uint8_t flags = data[1];
    // The parsers take C text: what stands after a zero byte never reaches them.
    const std::string whole(reinterpret_cast<const char*>(data + 2), size - 2);
    const std::string text = whole.substr(0, whole.find('\0'));

    checkTrim(text);
    checkKeyValues(text, separator, (flags & 1) != 0);
    checkSplit(text, separator, (flags & 2) != 0, (flags & 4) != 0);
    return 0;
}
