#include "diagnostics/info_report.h"

#include "diagnostics/browsers.h"
#include "diagnostics/diagnostic_logs.h"
#include "diagnostics/event_log_export.h"
#include "diagnostics/host_section.h"
#include "diagnostics/name_lookup.h"
#include "diagnostics/os_info.h"
#include "diagnostics/proxy_info.h"
#include "diagnostics/security_info.h"
#include "diagnostics/zip_archive.h"
#include "foundation/filesys.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/shell_open.h"
#include "host/corvanite_host.h"
#include "host/detector/wait_until.h"

namespace {

constexpr std::int64_t archiveSeconds = 5;

void writeReportLog() {
    writeLogFile("info", infoReportText());
}

ZipArchive archiveOfFiles(const std::vector<std::string>& files) {
    ZipArchive archive;
    for (const std::string& path : files) {
        try {
            archive.add(
                ZipArchive::Entry{filesys::fileNameOf(path), filesys::readFile(path), false});
        } catch (...) {
            // A file that can't be read stays out; the others still go in.
        }
    }
    return archive;
}

void writeArchive(const ZipArchive& archive, const std::string& archivePath) {
    filesys::replaceFile(archivePath, archive.pack());
    detector::waitUntil(archiveSeconds,
                        [&archivePath] { return filesys::exists(archivePath.c_str()); });
}

} // namespace

std::string reportTextFrom(const std::vector<SectionMaker>& sectionMakers) {
    std::string text = lineBreak + lineBreak + "--" + lineBreak + lineBreak;
    for (const std::string& section : runAllCollect(sectionMakers, true)) {
        text += section + lineBreak + lineBreak;
    }
    return text;
}

std::vector<SectionMaker> reportSectionMakers() {
    return {hostSection,         detector::proxySection,
            detector::osSection, detector::antivirusSection,
            browsersSection,     domainSection};
}

std::string infoReportText() {
    return reportTextFrom(reportSectionMakers());
}

std::vector<std::string> reportFilesOf(const ReportPaths& paths) {
    std::vector<std::string> files;
    for (const std::string& name : filesys::listDirectory(paths.logsFolder, true, false, false)) {
        files.push_back(filesys::joinPath(paths.logsFolder, name.c_str()));
    }
    files.push_back(paths.configFile);
    return files;
}

std::vector<std::string> reportFiles() {
    return reportFilesOf(reportPaths());
}

std::vector<Collector> reportCollectors() {
    return {exportEventLog,      pingProbe,        nslookupProbe,
            tcpConnectionsProbe, processListProbe, writeReportLog};
}

std::string buildInfoArchiveWith(const ReportPaths& paths,
                                 const std::vector<Collector>& collectors) {
    runAll(collectors, true);
    filesys::deleteFile(paths.archivePath);
    const ZipArchive archive = archiveOfFiles(reportFilesOf(paths));
    try {
        writeArchive(archive, paths.archivePath);
    } catch (...) {
        return "";
    }
    return paths.archivePath;
}

std::string buildInfoArchive(bool) {
    return buildInfoArchiveWith(reportPaths(), reportCollectors());
}

void collectInformationWith(const ReportPaths& paths, const std::function<std::string()>& build) {
    std::string folder = paths.tmpFolder;
    try {
        build();
    } catch (...) {
        folder = paths.logsFolder;
    }
    // Opening the folder is how the user learns that the work is done; there is no other word.
    if (!shellOpenPath(folder)) {
        showMessageBox(productName, panelMessages.text(panelmsg::logsNotOpened),
                       MessageBoxKind::error);
    }
}

void CorvaniteHost::collectInformation() {
    collectInformationWith(reportPaths(), [] { return buildInfoArchive(true); });
}
