#pragma once

#include <array>
#include <cstdint>

// The UTF-16 units of the bytes 0x80 to 0xFF of code page 1251. Byte 0x98, which the code page
// leaves undefined, stands for U+0098 so that every byte survives a round trip.
extern const std::array<std::uint16_t, 128> cp1251HighUnits;
