#include "foundation/text.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

bool isTrimmed(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 1 && byte <= 32;
}

// Cuts a text the way line reading from a stream does: a last piece without a delimiter counts,
// a delimiter at the very end adds no empty piece.
std::vector<std::string> pieces(const char* text, char delimiter) {
    std::vector<std::string> result;
    std::istringstream stream(text == nullptr ? "" : text);
    std::string piece;
    while (std::getline(stream, piece, delimiter)) {
        result.push_back(piece);
    }
    return result;
}

} // namespace

std::string trimLeft(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && isTrimmed(text[start])) {
        ++start;
    }
    return std::string(text.substr(start));
}

std::string trimRight(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && isTrimmed(text[end - 1])) {
        --end;
    }
    return std::string(text.substr(0, end));
}

std::string trim(std::string_view text) {
    return trimRight(trimLeft(text));
}

std::string toLower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return result;
}

bool parseBool(std::string_view text) {
    return toLower(trim(text)) == "true";
}

std::string boolText(bool value) {
    return value ? "true" : "false";
}

std::string joinText(const std::vector<std::string>& items, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) {
            result += separator;
        }
        result += items[i];
    }
    return result;
}

std::vector<std::string> splitText(const char* text, char delimiter, bool trimTokens, bool unique) {
    std::vector<std::string> result;
    for (std::string& piece : pieces(text, delimiter)) {
        std::string trimmed = trim(piece);
        if (trimmed.empty()) {
            continue;
        }
        if (trimTokens) {
            piece = std::move(trimmed);
        }
        if (unique && std::find(result.begin(), result.end(), piece) != result.end()) {
            continue;
        }
        result.push_back(std::move(piece));
    }
    return result;
}

std::map<std::string, std::string> parseKeyValues(const char* text, char separator, bool trimBoth) {
    std::map<std::string, std::string> result;
    for (const std::string& line : pieces(text, '\n')) {
        const std::size_t at = line.find(separator);
        if (line.empty() || at == std::string::npos) {
            continue;
        }
        std::string key = line.substr(0, at);
        std::string value = line.substr(at + 1);
        if (trimBoth) {
            key = trim(key);
            value = trim(value);
        }
        result[key] = std::move(value);
    }
    return result;
}

std::string versionText(unsigned major, unsigned minor, unsigned build, unsigned revision) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(build) + "." +
           std::to_string(revision);
}

bool endsWith(std::string_view text, std::string_view suffix) {
    return suffix.size() <= text.size() && text.substr(text.size() - suffix.size()) == suffix;
}

void swapBytePairs(void* buffer, std::size_t length) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    const std::size_t pairs = length / 2;
    for (std::uint16_t pair = 0; pair < pairs; ++pair) {
        std::swap(bytes[2 * pair], bytes[2 * pair + 1]);
    }
}
