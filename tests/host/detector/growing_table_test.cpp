#include "host/detector/growing_table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "foundation/exceptions.h"

namespace {

using detector::TableRead;

// A system table that grows at each read by `growth` bytes and `times` its size, as connections
// come while it is read.
// Its bytes count up from 1, so that what was copied can be checked.
struct GrowingTable {
    std::uint32_t size;
    std::uint32_t growth = 0;
    std::uint32_t times = 1;
    std::vector<std::size_t> blockSizes;

    TableRead operator()(std::vector<std::uint8_t>& block, std::uint32_t& needed) {
        blockSizes.push_back(block.size());
        const std::uint32_t now = size;
        size = size * times + growth;
        if (block.size() < now) {
            needed = now;
            return TableRead::tooSmall;
        }
        for (std::uint32_t index = 0; index < now; ++index) {
            block[index] = static_cast<std::uint8_t>(index + 1);
        }
        return TableRead::done;
    }
};

detector::TableReader readerOf(GrowingTable& table) {
    return [&table](std::vector<std::uint8_t>& block, std::uint32_t& needed) {
        return table(block, needed);
    };
}

TEST(GrowingTable, ATableThatFitsTheFirstBlockIsReadOnce) {
    GrowingTable table{100};
    const std::vector<std::uint8_t> bytes = detector::readGrowingTable(256, readerOf(table));
    EXPECT_EQ(table.blockSizes, std::vector<std::size_t>{256});
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(bytes[99], 100);
}

TEST(GrowingTable, ALargerTableIsReadAgainWithRoomBeyondTheSizeAskedFor) {
    GrowingTable table{1000};
    const std::vector<std::uint8_t> bytes = detector::readGrowingTable(256, readerOf(table));
    EXPECT_EQ(table.blockSizes, (std::vector<std::size_t>{256, 1500}));
    EXPECT_EQ(bytes[999], static_cast<std::uint8_t>(1000));
}

TEST(GrowingTable, ATableThatGrewBetweenTheReadsIsReadOnceMore) {
    // 1000 asked for, then 2000 by the second read: more than the room.
    GrowingTable table{1000, 1000};
    const std::vector<std::uint8_t> bytes = detector::readGrowingTable(256, readerOf(table));
    EXPECT_EQ(table.blockSizes, (std::vector<std::size_t>{256, 1500, 3000}));
    EXPECT_EQ(bytes[2999], static_cast<std::uint8_t>(3000));
}

TEST(GrowingTable, ATableThatKeepsOutgrowingItsBlockFailsAfterTheLastTry) {
    // Twice as large at each read: half as much room again never catches up.
    GrowingTable table{1000, 0, 2};
    EXPECT_THROW(detector::readGrowingTable(256, readerOf(table)), detector::InternalError);
    EXPECT_EQ(table.blockSizes.size(), static_cast<std::size_t>(detector::tableReadTries));
}

TEST(GrowingTable, AFailedReadRaisesAtOnce) {
    int reads = 0;
    const auto failing = [&reads](std::vector<std::uint8_t>&, std::uint32_t&) {
        ++reads;
        return TableRead::failed;
    };
    EXPECT_THROW(detector::readGrowingTable(256, failing), detector::InternalError);
    EXPECT_EQ(reads, 1);
}

TEST(GrowingTable, ATooSmallAnswerThatAsksForNoMoreRaisesAtOnce) {
    int reads = 0;
    const auto contradicting = [&reads](std::vector<std::uint8_t>& block, std::uint32_t& needed) {
        ++reads;
        needed = static_cast<std::uint32_t>(block.size());
        return TableRead::tooSmall;
    };
    EXPECT_THROW(detector::readGrowingTable(256, contradicting), detector::InternalError);
    EXPECT_EQ(reads, 1);
}

} // namespace
