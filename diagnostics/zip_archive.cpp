#include "diagnostics/zip_archive.h"

#include <new>
#include <string_view>
#include <utility>

#include "diagnostics/raw_deflate.h"
#include "diagnostics/zip_records.h"
#include "foundation/message_catalogue.h"

namespace {

// Data this short costs more as a deflate stream than as it stands.
constexpr std::size_t storedLimit = 3;
constexpr std::size_t maxNameLength = 0xFFFF;

// The name as the archive gets it: a C text, so it ends at a zero byte.
std::string_view memberName(const std::string& name) {
    return std::string_view(name.c_str());
}

bool isFolderName(std::string_view name) {
    return !name.empty() && name.back() == '/';
}

// Names are relative and use the forward slash; a folder entry carries no data.
bool isAcceptable(std::string_view name, const std::vector<std::uint8_t>& data) {
    if (name.size() > maxNameLength || name.starts_with('/')) {
        return false;
    }
    if (name.find_first_of("\\:") != std::string_view::npos) {
        return false;
    }
    return !isFolderName(name) || data.empty();
}

// Lays the members out one behind the other, then the directory and the end record.
class ArchiveBuilder {
public:
    void addMember(const ZipArchive::Entry& entry) {
        const std::string_view name = memberName(entry.name);
        if (members_ == ziprecords::maxMembers || !isAcceptable(name, entry.data) ||
            !ziprecords::memberFits(out_.size(), directory_.size(), name.size(), 0) ||
            entry.data.size() > ziprecords::maxArchiveSize) {
            throw ZipArchive::PackError();
        }
        const bool stored = entry.data.size() <= storedLimit;
        // Compressed data is kept even when it came out larger: there is no fall-back.
        std::vector<std::uint8_t> deflated;
        if (!stored) {
            deflated = rawdeflate::compress(entry.data);
        }
        const std::vector<std::uint8_t>& payload = stored ? entry.data : deflated;
        if (!ziprecords::memberFits(out_.size(), directory_.size(), name.size(), payload.size())) {
            throw ZipArchive::PackError();
        }
        ziprecords::Member member;
        member.name = name;
        member.method = stored ? ziprecords::methodStored : ziprecords::methodDeflated;
        member.crc = rawdeflate::checksum(entry.data);
        member.compressedSize = static_cast<std::uint32_t>(payload.size());
        member.uncompressedSize = static_cast<std::uint32_t>(entry.data.size());
        member.localHeaderOffset = static_cast<std::uint32_t>(out_.size());
        member.externalAttributes = isFolderName(name) ? ziprecords::folderAttribute : 0;
        ziprecords::appendLocalHeader(out_, member);
        out_.insert(out_.end(), payload.begin(), payload.end());
        ziprecords::appendCentralHeader(directory_, member);
        ++members_;
    }

    std::vector<std::uint8_t> finish() {
        const auto directoryOffset = members_ == 0 ? 0u : static_cast<std::uint32_t>(out_.size());
        const auto directorySize = static_cast<std::uint32_t>(directory_.size());
        out_.insert(out_.end(), directory_.begin(), directory_.end());
        ziprecords::appendEndRecord(out_, static_cast<std::uint16_t>(members_), directorySize,
                                    directoryOffset);
        return std::move(out_);
    }

private:
    std::vector<std::uint8_t> out_;
    std::vector<std::uint8_t> directory_;
    std::uint32_t members_ = 0;
};

} // namespace

const char* ZipArchive::PackError::what() const noexcept {
    return zipMessages.text(zipmsg::packError);
}

void ZipArchive::add(const Entry& entry) {
    entries_.push_back(entry);
}

std::vector<std::uint8_t> ZipArchive::pack() const {
    // Every failure of the coder or of memory on the way is a packing failure; no partial
    // archive leaves this function.
    try {
        ArchiveBuilder builder;
        for (const Entry& entry : entries_) {
            builder.addMember(entry);
        }
        return builder.finish();
    } catch (const PackError&) {
        throw;
    } catch (const std::exception&) {
        throw PackError();
    }
}
