#include "tests/support/diagnostics/report_installation.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/diagnostics/zip_reader.h"

ReportInstallation::ReportInstallation() : paths(reportPathsOf(folder.path())) {
    for (const char* sub : {"conf", "logs", "tmp"}) {
        std::filesystem::create_directories(folder.native() / sub);
    }
    write("conf/nginx.conf", "worker_processes 1;\n");
}

void ReportInstallation::write(const std::string& relative, const std::string& text) const {
    std::ofstream out(folder.native() / nativePath(relative), std::ios::binary);
    out << text;
}

std::vector<std::uint8_t> ReportInstallation::archiveBytes() const {
    std::ifstream in(folder.native() / "tmp" / "info.zip", std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in),
                                     std::istreambuf_iterator<char>());
}

bool ReportInstallation::archiveExists() const {
    return std::filesystem::exists(folder.native() / "tmp" / "info.zip");
}

std::vector<std::string> ReportInstallation::archiveMemberNames() const {
    std::vector<std::string> names;
    for (const ZipMemberRead& member : readZip(archiveBytes()).members) {
        names.push_back(member.central.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}
