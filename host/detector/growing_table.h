#pragma once

#include <cstdint>
#include <functional>
#include <vector>

// A table that the system copies into the caller's block, such as the TCP table. Connections
// come and go all the time on a busy machine, so the table may outgrow the size the system gave
// a moment before.
namespace detector {

// What one read into a block gave.
enum class TableRead { done, tooSmall, failed };

// One read into the block, whose size is block.size(). On tooSmall, neededSize holds the size
// the system asked for.
using TableReader =
    std::function<TableRead(std::vector<std::uint8_t>& block, std::uint32_t& neededSize)>;

// How many reads a table gets before it counts as growing without end.
constexpr int tableReadTries = 4;

// The table's bytes. The first read goes into a block of firstSize bytes; a table that doesn't
// fit is read again into a block of the size asked for and half as much again, since the table
// may grow further meanwhile. Raises detector::InternalError when a read fails, a block can't be
// had, or the table still doesn't fit at the last try.
std::vector<std::uint8_t> readGrowingTable(std::uint32_t firstSize, const TableReader& read);

} // namespace detector
