#include "tests/support/diagnostics/zip_reader.h"

#include <stdexcept>

#include <zlib.h>

namespace {

class Cursor {
public:
    Cursor(const std::vector<std::uint8_t>& bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    std::uint16_t u16() {
        need(2);
        const std::uint16_t value = bytes_[at_] | (bytes_[at_ + 1] << 8);
        at_ += 2;
        return value;
    }
    std::uint32_t u32() {
        const std::uint32_t low = u16();
        return low | (static_cast<std::uint32_t>(u16()) << 16);
    }
    std::string text(std::size_t length) {
        need(length);
        std::string value(bytes_.begin() + at_, bytes_.begin() + at_ + length);
        at_ += length;
        return value;
    }
    std::size_t position() const { return at_; }

private:
    void need(std::size_t length) const {
        if (at_ + length > bytes_.size()) {
            throw std::runtime_error("record runs past the end of the archive");
        }
    }
    const std::vector<std::uint8_t>& bytes_;
    std::size_t at_;
};

ZipEndRecord readEnd(const std::vector<std::uint8_t>& archive) {
    if (archive.size() < 22) {
        throw std::runtime_error("shorter than an end record");
    }
    Cursor in(archive, archive.size() - 22);
    ZipEndRecord end;
    end.signature = in.u32();
    end.thisDisk = in.u16();
    end.directoryDisk = in.u16();
    end.entriesOnDisk = in.u16();
    end.entriesInAll = in.u16();
    end.directorySize = in.u32();
    end.directoryOffset = in.u32();
    end.commentLength = in.u16();
    if (end.signature != 0x06054B50) {
        throw std::runtime_error("no end record signature");
    }
    return end;
}

void readEntryFields(Cursor& in, ZipEntryFields& fields) {
    fields.versionNeeded = in.u16();
    fields.flags = in.u16();
    fields.method = in.u16();
    fields.time = in.u16();
    fields.date = in.u16();
    fields.crc = in.u32();
    fields.compressedSize = in.u32();
    fields.uncompressedSize = in.u32();
    fields.nameLength = in.u16();
    fields.extraLength = in.u16();
}

void expectSignature(Cursor& in, std::uint32_t& signature, std::uint32_t expected,
                     const char* record) {
    signature = in.u32();
    if (signature != expected) {
        throw std::runtime_error(std::string("bad ") + record + " header signature");
    }
}

ZipCentralHeader readCentral(Cursor& in) {
    ZipCentralHeader h;
    expectSignature(in, h.signature, 0x02014B50, "central");
    h.versionMadeBy = in.u16();
    readEntryFields(in, h);
    h.commentLength = in.u16();
    h.diskStart = in.u16();
    h.internalAttributes = in.u16();
    h.externalAttributes = in.u32();
    h.localHeaderOffset = in.u32();
    h.name = in.text(h.nameLength);
    in.text(h.extraLength + h.commentLength);
    return h;
}

ZipLocalHeader readLocal(Cursor& in) {
    ZipLocalHeader h;
    expectSignature(in, h.signature, 0x04034B50, "local");
    readEntryFields(in, h);
    h.name = in.text(h.nameLength);
    in.text(h.extraLength);
    return h;
}

std::vector<std::uint8_t> inflateRaw(const std::uint8_t* data, std::size_t size,
                                     std::size_t expected) {
    std::vector<std::uint8_t> out(expected);
    z_stream stream{};
    if (inflateInit2(&stream, -15) != Z_OK) {
        throw std::runtime_error("inflateInit2");
    }
    stream.next_in = const_cast<Bytef*>(data);
    stream.avail_in = static_cast<uInt>(size);
    // One spare byte lets an overlong stream show itself.
    out.resize(expected + 1);
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = inflate(&stream, Z_FINISH);
    const std::size_t produced = out.size() - stream.avail_out;
    const std::size_t consumed = size - stream.avail_in;
    inflateEnd(&stream);
    if (result != Z_STREAM_END || produced != expected || consumed != size) {
        throw std::runtime_error("deflate stream doesn't decode to the stated size");
    }
    out.resize(expected);
    return out;
}

std::vector<std::uint8_t> memberContent(const std::vector<std::uint8_t>& archive,
                                        const ZipCentralHeader& central, std::size_t dataAt) {
    if (dataAt + central.compressedSize > archive.size()) {
        throw std::runtime_error("member data runs past the end");
    }
    const std::uint8_t* data = archive.data() + dataAt;
    std::vector<std::uint8_t> content;
    if (central.method == 0) {
        if (central.compressedSize != central.uncompressedSize) {
            throw std::runtime_error("stored member with two sizes");
        }
        content.assign(data, data + central.compressedSize);
    } else if (central.method == 8) {
        content = inflateRaw(data, central.compressedSize, central.uncompressedSize);
    } else {
        throw std::runtime_error("unknown method");
    }
    const uLong crc = crc32(crc32(0, Z_NULL, 0), content.data(), static_cast<uInt>(content.size()));
    if (crc != central.crc) {
        throw std::runtime_error("CRC mismatch in " + central.name);
    }
    return content;
}

} // namespace

ZipRead readZip(const std::vector<std::uint8_t>& archive) {
    ZipRead result;
    result.end = readEnd(archive);
    if (result.end.directoryOffset + std::size_t{result.end.directorySize} + 22 != archive.size()) {
        throw std::runtime_error("directory doesn't end where the end record begins");
    }
    Cursor directory(archive, result.end.directoryOffset);
    for (unsigned i = 0; i < result.end.entriesInAll; ++i) {
        ZipMemberRead member;
        member.central = readCentral(directory);
        Cursor local(archive, member.central.localHeaderOffset);
        member.local = readLocal(local);
        if (member.local.name != member.central.name || member.local.crc != member.central.crc ||
            member.local.compressedSize != member.central.compressedSize ||
            member.local.uncompressedSize != member.central.uncompressedSize ||
            member.local.method != member.central.method) {
            throw std::runtime_error("local and central header disagree for " + member.local.name);
        }
        member.content = memberContent(archive, member.central, local.position());
        result.members.push_back(std::move(member));
    }
    if (directory.position() !=
        result.end.directoryOffset + std::size_t{result.end.directorySize}) {
        throw std::runtime_error("directory size doesn't match its headers");
    }
    return result;
}
