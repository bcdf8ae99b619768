#include "host/detector/growing_table.h"

#include <algorithm>
#include <cstdint>
#include <exception>

#include "foundation/exceptions.h"

namespace detector {

std::vector<std::uint8_t> readGrowingTable(std::uint32_t firstSize, const TableReader& read) {
    std::uint32_t size = firstSize;
    for (int attempt = 1; attempt <= tableReadTries; ++attempt) {
        std::vector<std::uint8_t> block;
        // A size past what can be had fails as the system's own refusal would.
        try {
            block.resize(size);
        } catch (const std::exception&) {
            throw InternalError();
        }
        std::uint32_t needed = 0;
        const TableRead result = read(block, needed);
        if (result == TableRead::done) {
            return block;
        }
        if (result == TableRead::failed || needed <= block.size()) {
            throw InternalError();
        }
        // The system's sizes are 32-bit: the room stops there.
        size = static_cast<std::uint32_t>(
            std::min<std::uint64_t>(std::uint64_t{needed} + needed / 2, UINT32_MAX));
    }
    throw InternalError();
}

} // namespace detector
