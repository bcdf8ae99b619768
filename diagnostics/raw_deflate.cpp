#include "diagnostics/raw_deflate.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include <zlib.h>

namespace rawdeflate {

namespace {

constexpr int level = 9;
// A negative window size asks zlib for a raw stream, the form a ZIP member holds.
constexpr int windowBits = -15;
constexpr int memoryLevel = 9;
constexpr std::size_t outputChunk = 64 * 1024;
// zlib counts in 32-bit units; larger inputs are fed in pieces.
constexpr std::size_t inputChunk = 1u << 30;

// Owns one deflate state for one member; it is released on every path.
class Deflater {
public:
    Deflater() {
        const int result =
            deflateInit2(&stream_, level, Z_DEFLATED, windowBits, memoryLevel, Z_DEFAULT_STRATEGY);
        if (result == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        if (result != Z_OK) {
            throw std::runtime_error("deflateInit2");
        }
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    std::vector<std::uint8_t> run(std::span<const std::uint8_t> data) {
        std::vector<std::uint8_t> out;
        std::size_t fed = 0;
        int result = Z_OK;
        while (result != Z_STREAM_END) {
            if (stream_.avail_in == 0 && fed < data.size()) {
                const std::size_t piece = std::min(inputChunk, data.size() - fed);
                stream_.next_in = const_cast<Bytef*>(data.data() + fed);
                stream_.avail_in = static_cast<uInt>(piece);
                fed += piece;
            }
            const int flush = fed == data.size() ? Z_FINISH : Z_NO_FLUSH;
            const std::size_t before = out.size();
            out.resize(before + outputChunk);
            stream_.next_out = out.data() + before;
            stream_.avail_out = static_cast<uInt>(outputChunk);
            result = deflate(&stream_, flush);
            out.resize(out.size() - stream_.avail_out);
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
                throw std::runtime_error("deflate");
            }
        }
        return out;
    }

private:
    z_stream stream_{};
};

} // namespace

std::vector<std::uint8_t> compress(std::span<const std::uint8_t> data) {
    Deflater deflater;
    return deflater.run(data);
}

std::uint32_t checksum(std::span<const std::uint8_t> data) {
    uLong crc = crc32(0, Z_NULL, 0);
    std::size_t done = 0;
    while (done < data.size()) {
        const std::size_t piece = std::min(inputChunk, data.size() - done);
        crc = crc32(crc, data.data() + done, static_cast<uInt>(piece));
        done += piece;
    }
    return static_cast<std::uint32_t>(crc);
}

} // namespace rawdeflate
