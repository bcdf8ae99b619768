#include "diagnostics/zip_records.h"

namespace ziprecords {

namespace {

constexpr std::uint32_t localSignature = 0x04034B50;
constexpr std::uint32_t centralSignature = 0x02014B50;
constexpr std::uint32_t endSignature = 0x06054B50;
constexpr std::uint16_t versionMadeBy = 0;

void put16(std::vector<std::uint8_t>& out, std::uint16_t value) {
    out.push_back(static_cast<std::uint8_t>(value));
    out.push_back(static_cast<std::uint8_t>(value >> 8));
}

void put32(std::vector<std::uint8_t>& out, std::uint32_t value) {
    put16(out, static_cast<std::uint16_t>(value));
    put16(out, static_cast<std::uint16_t>(value >> 16));
}

// Deflate needs the reader to know version 2.0; a stored member asks for nothing.
std::uint16_t versionNeeded(std::uint16_t method) {
    return method == methodDeflated ? 20 : 0;
}

void putName(std::vector<std::uint8_t>& out, std::string_view name) {
    out.insert(out.end(), name.begin(), name.end());
}

// The fields a local header and its directory entry share, from the version needed to the extra
// field's length.
void putEntryFields(std::vector<std::uint8_t>& out, const Member& member) {
    put16(out, versionNeeded(member.method));
    put16(out, 0); // general flags: not even the UTF-8 bit
    put16(out, member.method);
    put16(out, 0); // DOS time: the archive keeps no time stamps
    put16(out, 0); // DOS date
    put32(out, member.crc);
    put32(out, member.compressedSize);
    put32(out, member.uncompressedSize);
    put16(out, static_cast<std::uint16_t>(member.name.size()));
    put16(out, 0); // extra field length
}

} // namespace

void appendLocalHeader(std::vector<std::uint8_t>& out, const Member& member) {
    put32(out, localSignature);
    putEntryFields(out, member);
    putName(out, member.name);
}

void appendCentralHeader(std::vector<std::uint8_t>& out, const Member& member) {
    put32(out, centralSignature);
    put16(out, versionMadeBy);
    putEntryFields(out, member);
    put16(out, 0); // comment length
    put16(out, 0); // disk number start
    put16(out, 0); // internal attributes
    put32(out, member.externalAttributes);
    put32(out, member.localHeaderOffset);
    putName(out, member.name);
}

void appendEndRecord(std::vector<std::uint8_t>& out, std::uint16_t members,
                     std::uint32_t directorySize, std::uint32_t directoryOffset) {
    put32(out, endSignature);
    put16(out, 0); // this disk
    put16(out, 0); // disk of the directory
    put16(out, members);
    put16(out, members);
    put32(out, directorySize);
    put32(out, directoryOffset);
    put16(out, 0); // comment length
}

bool memberFits(std::uint64_t archiveSize, std::uint64_t directorySize, std::size_t nameLength,
                std::uint64_t storedSize) {
    const std::uint64_t total = archiveSize + localHeaderSize + nameLength + storedSize +
                                directorySize + centralHeaderSize + nameLength + endRecordSize;
    return storedSize <= maxArchiveSize && total <= maxArchiveSize;
}

} // namespace ziprecords
