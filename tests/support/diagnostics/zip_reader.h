#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A reader of ZIP files written for the tests alone, sharing no code with the writer: it walks an
// archive the way unzip does, from the end record through the directory to each local header,
// inflates with zlib and checks every CRC. Anything it can't accept throws std::runtime_error with
// the reason.

// The fields a local header and its directory entry both carry, in the order they stand after the
// version needed.
struct ZipEntryFields {
    std::uint16_t versionNeeded = 0;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint16_t time = 0;
    std::uint16_t date = 0;
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t uncompressedSize = 0;
    std::uint16_t nameLength = 0;
    std::uint16_t extraLength = 0;
};

struct ZipLocalHeader : ZipEntryFields {
    std::uint32_t signature = 0;
    std::string name;
};

struct ZipCentralHeader : ZipEntryFields {
    std::uint32_t signature = 0;
    std::uint16_t versionMadeBy = 0;
    std::uint16_t commentLength = 0;
    std::uint16_t diskStart = 0;
    std::uint16_t internalAttributes = 0;
    std::uint32_t externalAttributes = 0;
    std::uint32_t localHeaderOffset = 0;
    std::string name;
};

struct ZipEndRecord {
    std::uint32_t signature = 0;
    std::uint16_t thisDisk = 0;
    std::uint16_t directoryDisk = 0;
    std::uint16_t entriesOnDisk = 0;
    std::uint16_t entriesInAll = 0;
    std::uint32_t directorySize = 0;
    std::uint32_t directoryOffset = 0;
    std::uint16_t commentLength = 0;
};

struct ZipMemberRead {
    ZipCentralHeader central;
    ZipLocalHeader local;
    // The member's content after inflating, its CRC checked.
    std::vector<std::uint8_t> content;
};

struct ZipRead {
    ZipEndRecord end;
    std::vector<ZipMemberRead> members;
};

ZipRead readZip(const std::vector<std::uint8_t>& archive);
