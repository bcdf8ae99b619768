// Code page 1251 of arbitrary bytes, and the round trips through UTF-16 and UTF-8. The table and
// its reverse map agree exactly, 0x98 included, so every byte comes back as it went; a unit that
// the code page lacks becomes "?".

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/text.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

std::wstring unitsOf(const std::uint8_t* data, std::size_t size) {
    std::wstring units;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        units += static_cast<wchar_t>(data[i] | (data[i + 1] << 8));
    }
    return units;
}

void checkBytes(std::string_view bytes) {
    const std::wstring units = fromCp1251(bytes);
    fuzzCheck(units.size() == bytes.size(), "fromCp1251 gives one unit a byte");
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        fuzzCheck(byte >= 0x80 || units[i] == byte, "fromCp1251 keeps ASCII");
        fuzzCheck(byte < 0x80 || units[i] >= 0x80, "fromCp1251 maps high bytes above ASCII");
    }
    fuzzCheck(toCp1251(units) == bytes, "cp1251 survives the round trip through UTF-16");
    fuzzCheck(utf8ToCp1251(cp1251ToUtf8(bytes)) == bytes,
              "cp1251 survives the round trip through UTF-8");
}

void checkUnits(const std::wstring& units) {
    const std::string bytes = toCp1251(units);
    fuzzCheck(bytes.size() == units.size(), "toCp1251 gives one byte a unit");
    const std::wstring back = fromCp1251(bytes);
    for (std::size_t i = 0; i < units.size(); ++i) {
        fuzzCheck(back[i] == units[i] || bytes[i] == '?',
                  "toCp1251 keeps what the code page holds and gives \"?\" for the rest");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkBytes(std::string_view(reinterpret_cast<const char*>(data), size));
    checkUnits(unitsOf(data, size));
    return 0;
}
