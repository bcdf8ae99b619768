#pragma once

#include <cstdint>
#include <span>
#include <vector>

// The compressing half of the ZIP writer, over zlib.
namespace rawdeflate {

// The data as a raw deflate stream (no zlib header or trailer) at level 9, the strongest search.
// Throws std::runtime_error when the coder fails and std::bad_alloc when memory runs out.
std::vector<std::uint8_t> compress(std::span<const std::uint8_t> data);

// The ZIP checksum of the data, the standard CRC-32 started from 0.
std::uint32_t checksum(std::span<const std::uint8_t> data);

} // namespace rawdeflate
