#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The three records of a ZIP file as info.zip lays them out: no time stamps, no flag bits, no extra
// fields, no data descriptor, no ZIP64 form. All numbers are little-endian.
namespace ziprecords {

constexpr std::size_t localHeaderSize = 30;
constexpr std::size_t centralHeaderSize = 46;
constexpr std::size_t endRecordSize = 22;
// The end record counts members in 16 bits.
constexpr std::uint32_t maxMembers = 0xFFFF;
constexpr std::uint64_t maxArchiveSize = 0xFFFFFFFF;
constexpr std::uint16_t methodStored = 0;
constexpr std::uint16_t methodDeflated = 8;
constexpr std::uint32_t folderAttribute = 0x10;

// What the local and the central header say of one member.
struct Member {
    std::string_view name;
    std::uint16_t method = methodStored;
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t uncompressedSize = 0;
    std::uint32_t localHeaderOffset = 0;
    std::uint32_t externalAttributes = 0;
};

// The local header followed by the name.
void appendLocalHeader(std::vector<std::uint8_t>& out, const Member& member);
// The central directory header followed by the name.
void appendCentralHeader(std::vector<std::uint8_t>& out, const Member& member);
void appendEndRecord(std::vector<std::uint8_t>& out, std::uint16_t members,
                     std::uint32_t directorySize, std::uint32_t directoryOffset);

// Whether a member with this name and this much stored data still leaves an archive within
// 4 GiB once its own headers, the directory so far and the end record are counted.
bool memberFits(std::uint64_t archiveSize, std::uint64_t directorySize, std::size_t nameLength,
                std::uint64_t storedSize);

} // namespace ziprecords
