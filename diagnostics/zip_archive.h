#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

// Named byte blocks gathered in memory and turned into the bytes of one ZIP file: the writer of
// info.zip. There is no reader.
class ZipArchive {
public:
    struct Entry {
        // The member's name, its bytes as they stand (UTF-8, base names only).
        std::string name;
        std::vector<std::uint8_t> data;
        // Set by the caller; nothing reads it.
        bool flag = false;
    };

    // The archive can't be made. The words are looked up when read, in the archive catalogue's
    // language.
    class PackError : public std::exception {
    public:
        const char* what() const noexcept override;
    };

    ZipArchive() = default;

    // Copies the entry to the end of the list; nothing is checked or compressed yet.
    void add(const Entry& entry);

    // The whole archive. Leaves the entries alone, so it can be called again. Throws PackError.
    std::vector<std::uint8_t> pack() const;

private:
    std::vector<Entry> entries_;
};
