#include "host/detector/run_and_capture.h"

#include <array>
#include <exception>

#include "host/detector/wait_until.h"

namespace detector {

std::optional<std::string> readOutputBlocks(const BlockReader& readBlock) {
    std::string output;
    std::array<char, outputBlockSize> buffer{};
    std::size_t count = 0;
    do {
        const std::optional<std::size_t> read = readBlock(buffer.data(), buffer.size());
        if (!read) {
            return std::nullopt;
        }
        count = *read;
        // The last byte read makes room for the terminating zero, so it is lost; with nothing
        // read the index is out of range, and the run gives no output.
        buffer.at(count - 1) = '\0';
        output.append(buffer.data());
    } while (count == outputBlockSize);
    return output;
}

std::optional<std::string> runAndCapture(const std::string& commandLine, std::int64_t seconds) {
    PipeEnd inputRead;
    PipeEnd inputWrite;
    PipeEnd outputRead;
    PipeEnd outputWrite;
    createPipe(inputRead, inputWrite);
    createPipe(outputRead, outputWrite);
    native::CapturedChild child = native::startCapturedChild(commandLine, inputRead, outputWrite);
    const bool ended = waitUntil(seconds, [&child] { return native::childHasEnded(child); });
    native::releaseChild(child);
    if (!ended) {
        return std::nullopt; // the pipes close with their holders; the child goes on
    }
    try {
        inputRead.close();
        inputWrite.close();
        outputWrite.close();
        std::optional<std::string> output =
            readOutputBlocks([&outputRead](char* buffer, std::size_t size) {
                return native::readPipe(outputRead, buffer, size);
            });
        outputRead.close();
        return output;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace detector
