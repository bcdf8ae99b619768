// UTF-8 decoding of arbitrary bytes, and the round trips between UTF-8 and UTF-16. The decoder
// checks nothing, so any byte sequence is valid input: it must never read past its end, never give
// more units than bytes, and whatever it gives must survive encoding and decoding unchanged.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/text.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

// The input's bytes taken in pairs as little-endian UTF-16 units, lone surrogates included.
std::wstring unitsOf(const std::uint8_t* data, std::size_t size) {
    std::wstring units;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        units += static_cast<wchar_t>(data[i] | (data[i + 1] << 8));
    }
    return units;
}

bool allBelow(std::string_view bytes, unsigned limit) {
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= limit) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    const std::wstring decoded = utf8ToUtf16(bytes);
    fuzzCheck(decoded.size() <= bytes.size(), "utf8ToUtf16 gives no more units than bytes");
    for (const wchar_t unit : decoded) {
        fuzzCheck(unit >= 0 && unit <= 0xFFFF, "utf8ToUtf16 gives 16-bit units");
    }
    if (allBelow(bytes, 0x80)) {
        fuzzCheck(decoded == std::wstring(bytes.begin(), bytes.end()), "ASCII decodes to itself");
    }
    const std::string encoded = utf16ToUtf8(decoded);
    fuzzCheck(utf8ToUtf16(encoded) == decoded, "decoded text survives encoding and decoding");
    fuzzCheck(utf16ToUtf8(utf8ToUtf16(encoded)) == encoded, "encoded text is a fixed point");

    // Every 16-bit unit, a surrogate too, comes back from UTF-8 as it went in: paths keep their
    // characters outside the basic plane.
    const std::wstring units = unitsOf(data, size);
    const std::string unitsUtf8 = utf16ToUtf8(units);
    fuzzCheck(unitsUtf8.size() <= units.size() * 3, "utf16ToUtf8 gives at most three bytes a unit");
    fuzzCheck(utf8ToUtf16(unitsUtf8) == units, "UTF-16 survives the round trip through UTF-8");
    return 0;
}
