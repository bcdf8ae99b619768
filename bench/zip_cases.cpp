// Packing info.zip: one large log, and many small ones, from the files that scripts/bench.sh makes
// (bench/bench_data.py). The archive's size is reported beside the time, for the comparison with
// gzip -9 on the same files.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "bench/bench_case.h"
#include "diagnostics/zip_archive.h"
#include "foundation/filesys.h"

namespace {

struct PackedFolder {
    ZipArchive archive;
    std::int64_t inputBytes = 0;
    std::size_t archiveBytes = 0;
};

// Every file of a folder of the input, in the listing's order, as the report adds the logs.
PackedFolder folderArchive(const std::string& folder) {
    PackedFolder packed;
    const std::string path = filesys::joinPath(benchDataFolder(), folder.c_str());
    for (const std::string& name : filesys::listDirectory(path, true, false, false)) {
        std::vector<std::uint8_t> bytes = filesys::readFile(filesys::joinPath(path, name.c_str()));
        packed.inputBytes += static_cast<std::int64_t>(bytes.size());
        packed.archive.add(ZipArchive::Entry{name, std::move(bytes), false});
    }
    return packed;
}

PackedFolder& bigLog() {
    static PackedFolder packed = folderArchive("big");
    return packed;
}

PackedFolder& smallLogs() {
    static PackedFolder packed = folderArchive("small");
    return packed;
}

BenchCase packCase(const char* name, PackedFolder& (*folder)()) {
    return BenchCase{
        .name = name,
        .setup = [folder] { folder(); },
        .run = [folder] { folder().archiveBytes = folder().archive.pack().size(); },
        .bytesPerRun = 0,
        .counters =
            [folder] {
                return std::map<std::string, double>{
                    {"zip_bytes", static_cast<double>(folder().archiveBytes)},
                    {"input_bytes", static_cast<double>(folder().inputBytes)}};
            },
    };
}

const BenchCaseRegistration big{packCase("zip/big_log", bigLog)};
const BenchCaseRegistration small{packCase("zip/small_logs", smallLogs)};

} // namespace
