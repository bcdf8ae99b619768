#include "panel/layout_numbers.h"

#include <cmath>

namespace {

// Truncated toward zero to 64 bits, then cut to 32 as a narrowing conversion does. A number that
// has no 64-bit value gives 0: the low half of the processor's answer for such a conversion.
std::int32_t truncated(double number) {
    constexpr double limit = 9223372036854775808.0; // 2 to the 63rd
    const double whole = std::trunc(number);
    if (!(whole > -limit && whole < limit)) {
        return 0;
    }
    return static_cast<std::int32_t>(static_cast<std::int64_t>(whole));
}

} // namespace

std::int32_t identifierNumber(const nlohmann::json& value) {
    if (value.is_number_float()) {
        return truncated(value.get<double>());
    }
    // The library's 64-bit integer reading refuses booleans with its own words.
    return static_cast<std::int32_t>(value.get<nlohmann::json::number_integer_t>());
}

std::int32_t lenientNumber(const nlohmann::json& value) {
    if (value.is_number_float()) {
        return truncated(value.get<double>());
    }
    return value.get<std::int32_t>();
}

std::int32_t numberOrZero(const nlohmann::json& object, const char* key) {
    if (!object.is_object()) {
        return object.value(key, 0);
    }
    const auto found = object.find(key);
    return found == object.end() ? 0 : lenientNumber(*found);
}
