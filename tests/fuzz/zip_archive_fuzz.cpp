// ZipArchive::pack on arbitrary entries, its bytes read back here with zlib: every member's
// headers, its name, its CRC-32 and its data after inflating must be those of the entry, and the
// directory and the end record must point where the members lie.
//
// Input: records of one byte of name length, the name, two bytes (little-endian) of data length and
// the data, until the input ends; a short last record takes what is left.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

#include "diagnostics/zip_archive.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

class InputReader {
public:
    InputReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool atEnd() const { return at_ >= size_; }

    std::size_t number(std::size_t width) {
        std::size_t value = 0;
        for (std::size_t i = 0; i < width && at_ < size_; ++i) {
            value |= static_cast<std::size_t>(data_[at_++]) << (8 * i);
        }
        return value;
    }

    Bytes bytes(std::size_t count) {
        const std::size_t taken = std::min(count, size_ - at_);
        Bytes result(data_ + at_, data_ + at_ + taken);
        at_ += taken;
        return result;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

std::vector<ZipArchive::Entry> readEntries(const std::uint8_t* data, std::size_t size) {
    std::vector<ZipArchive::Entry> entries;
    InputReader input(data, size);
    while (!input.atEnd()) {
        ZipArchive::Entry entry;
        const Bytes name = input.bytes(input.number(1));
        entry.name.assign(name.begin(), name.end());
        entry.data = input.bytes(input.number(2));
        entries.push_back(std::move(entry));
    }
    return entries;
}

// The name that the archive holds: a C text, up to its first zero byte.
std::string_view memberName(const ZipArchive::Entry& entry) {
    return std::string_view(entry.name.c_str());
}

bool isFolder(std::string_view name) {
    return !name.empty() && name.back() == '/';
}

// Relative names with forward slashes only, and folders without data.
bool isAcceptable(const ZipArchive::Entry& entry) {
    const std::string_view name = memberName(entry);
    return !name.starts_with('/') && name.find_first_of("\\:") == std::string_view::npos &&
           (!isFolder(name) || entry.data.empty());
}

class ArchiveReader {
public:
    explicit ArchiveReader(const Bytes& archive) : archive_(archive) {}

    std::uint32_t number(std::size_t at, std::size_t width) const {
        fuzzCheck(at + width <= archive_.size(), "a record lies inside the archive");
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < width; ++i) {
            value |= static_cast<std::uint32_t>(archive_[at + i]) << (8 * i);
        }
        return value;
    }

    std::string_view text(std::size_t at, std::size_t length) const {
        fuzzCheck(at + length <= archive_.size(), "a name lies inside the archive");
        return std::string_view(reinterpret_cast<const char*>(archive_.data() + at), length);
    }

    Bytes bytes(std::size_t at, std::size_t length) const {
        fuzzCheck(at + length <= archive_.size(), "member data lies inside the archive");
        return Bytes(archive_.begin() + static_cast<std::ptrdiff_t>(at),
                     archive_.begin() + static_cast<std::ptrdiff_t>(at + length));
    }

private:
    const Bytes& archive_;
};

Bytes inflateRaw(const Bytes& compressed, std::size_t expectedSize) {
    Bytes result(expectedSize + 1);
    z_stream stream{};
    fuzzCheck(inflateInit2(&stream, -15) == Z_OK, "zlib starts");
    stream.next_in = const_cast<Bytef*>(compressed.data());
    stream.avail_in = static_cast<uInt>(compressed.size());
    stream.next_out = result.data();
    stream.avail_out = static_cast<uInt>(result.size());
    const int status = inflate(&stream, Z_FINISH);
    fuzzCheck(status == Z_STREAM_END, "a member is one whole raw deflate stream");
    fuzzCheck(stream.avail_in == 0, "the compressed size is the stream's size");
    result.resize(stream.total_out);
    inflateEnd(&stream);
    return result;
}

std::uint32_t crcOf(const Bytes& data) {
    return static_cast<std::uint32_t>(crc32(0L, data.data(), static_cast<uInt>(data.size())));
}

// The local header and data of one member at `at`; gives the offset behind its data.
std::size_t checkMember(const ArchiveReader& zip, std::size_t at, const ZipArchive::Entry& entry) {
    const std::string_view name = memberName(entry);
    const bool stored = entry.data.size() <= 3;
    fuzzCheck(zip.number(at, 4) == 0x04034B50, "local header signature");
    fuzzCheck(zip.number(at + 4, 2) == (stored ? 0u : 20u), "version needed");
    fuzzCheck(zip.number(at + 6, 2) == 0, "no flag bits");
    fuzzCheck(zip.number(at + 8, 2) == (stored ? 0u : 8u), "stored up to 3 bytes, else deflated");
    fuzzCheck(zip.number(at + 10, 4) == 0, "no time stamp");
    fuzzCheck(zip.number(at + 14, 4) == crcOf(entry.data), "CRC-32 of the data");
    const std::uint32_t compressedSize = zip.number(at + 18, 4);
    fuzzCheck(zip.number(at + 22, 4) == entry.data.size(), "uncompressed size");
    fuzzCheck(zip.number(at + 26, 2) == name.size(), "name length");
    fuzzCheck(zip.number(at + 28, 2) == 0, "no extra field");
    fuzzCheck(zip.text(at + 30, name.size()) == name, "the member's name");
    const Bytes payload = zip.bytes(at + 30 + name.size(), compressedSize);
    fuzzCheck((stored ? payload : inflateRaw(payload, entry.data.size())) == entry.data,
              "the member's data reads back");
    return at + 30 + name.size() + compressedSize;
}

// The directory header of one member at `at`; gives the offset behind it.
std::size_t checkDirectoryEntry(const ArchiveReader& zip, std::size_t at, std::size_t local,
                                const ZipArchive::Entry& entry) {
    const std::string_view name = memberName(entry);
    fuzzCheck(zip.number(at, 4) == 0x02014B50, "directory header signature");
    fuzzCheck(zip.number(at + 4, 2) == 0, "version made by");
    for (std::size_t field = 0; field < 26; ++field) {
        fuzzCheck(zip.number(at + 6 + field, 1) == zip.number(local + 4 + field, 1),
                  "the directory repeats the local header");
    }
    fuzzCheck(zip.number(at + 32, 4) == 0 && zip.number(at + 36, 2) == 0,
              "no comment, disk or internal attributes");
    fuzzCheck(zip.number(at + 38, 4) == (isFolder(name) ? 0x10u : 0u), "folder attribute");
    fuzzCheck(zip.number(at + 42, 4) == local, "offset of the local header");
    fuzzCheck(zip.text(at + 46, name.size()) == name, "the directory's name");
    return at + 46 + name.size();
}

void checkArchive(const Bytes& archive, const std::vector<ZipArchive::Entry>& entries) {
    const ArchiveReader zip(archive);
    fuzzCheck(archive.size() >= 22, "the end record is there");
    const std::size_t end = archive.size() - 22;
    fuzzCheck(zip.number(end, 4) == 0x06054B50, "end record signature");
    fuzzCheck(zip.number(end + 4, 4) == 0, "one disk");
    fuzzCheck(zip.number(end + 8, 2) == entries.size() && zip.number(end + 10, 2) == entries.size(),
              "member count");
    fuzzCheck(zip.number(end + 20, 2) == 0, "no archive comment");

    std::vector<std::size_t> locals;
    std::size_t at = 0;
    for (const ZipArchive::Entry& entry : entries) {
        locals.push_back(at);
        at = checkMember(zip, at, entry);
    }
    const std::size_t directory = at;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        at = checkDirectoryEntry(zip, at, locals[i], entries[i]);
    }
    fuzzCheck(at == end, "the end record follows the directory");
    fuzzCheck(zip.number(end + 12, 4) == end - directory, "directory size");
    fuzzCheck(zip.number(end + 16, 4) == (entries.empty() ? 0 : directory), "directory offset");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<ZipArchive::Entry> entries = readEntries(data, size);
    ZipArchive archive;
    bool acceptable = true;
    for (const ZipArchive::Entry& entry : entries) {
        archive.add(entry);
        acceptable = acceptable && isAcceptable(entry);
    }
    Bytes packed;
    try {
        packed = archive.pack();
    } catch (const ZipArchive::PackError&) {
        fuzzCheck(!acceptable, "only a name against the rules fails the archive");
        return 0;
    }
    fuzzCheck(acceptable, "a name against the rules fails the archive");
    checkArchive(packed, entries);
    fuzzCheck(archive.pack() == packed, "packing again gives the same bytes");
    return 0;
}
