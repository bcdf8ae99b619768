#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "diagnostics/info_report.h"
#include "tests/support/foundation/temp_folder.h"

// An installation folder of the test's own, with the server's configuration, a logs folder and a
// tmp folder, and the report paths below it.
class ReportInstallation {
public:
    ReportInstallation();

    void write(const std::string& relative, const std::string& text) const;
    std::vector<std::uint8_t> archiveBytes() const;
    bool archiveExists() const;
    // The names of the archive's members, sorted.
    std::vector<std::string> archiveMemberNames() const;

    TempFolder folder;
    ReportPaths paths;
};
