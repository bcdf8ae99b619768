#include "foundation/text.h"

#include <stdexcept>

namespace {

// The standard libraries word these failures differently; the user sees one wording everywhere.
template <typename Read> auto readNumber(Read read, const std::string& text, const char* name) {
    try {
        return read(text);
    } catch (const std::invalid_argument&) {
        std::string words = "invalid ";
        words.append(name).append(" argument");
        throw std::invalid_argument(words);
    } catch (const std::out_of_range&) {
        std::string words = name;
        words.append(" argument out of range");
        throw std::out_of_range(words);
    }
}

} // namespace

int readInt(const std::string& text) {
    return readNumber([](const std::string& t) { return std::stoi(t, nullptr, 10); }, text, "stoi");
}

unsigned long readUnsigned(const std::string& text) {
    return readNumber([](const std::string& t) { return std::stoul(t, nullptr, 10); }, text,
                      "stoul");
}
