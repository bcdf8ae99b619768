#pragma once

#include <functional>
#include <string>
#include <vector>

#include "diagnostics/report_paths.h"
#include "diagnostics/run_all.h"

// "Get information": six collectors fill the logs folder side by side, then the logs and the
// server's configuration are packed into info.zip and the folder is shown to the user.

// Two empty lines and "--", then each section that could be made, in list order, with two line
// breaks behind it. The makers run side by side.
std::string reportTextFrom(const std::vector<SectionMaker>& sectionMakers);

// The six sections: host, proxy, system, antivirus, browsers, domain.
std::vector<SectionMaker> reportSectionMakers();

// The whole report as UTF-8 text; the mail to support carries it too.
std::string infoReportText();

// Every file of the logs folder, in the listing's order, and the server's configuration last.
// Raises filesys::ReadFolderError when the logs folder can't be listed, also when it is missing.
std::vector<std::string> reportFilesOf(const ReportPaths& paths);
std::vector<std::string> reportFiles();

// The collectors: event log export, ping, nslookup, connections, processes, report log.
std::vector<Collector> reportCollectors();

// Runs the collectors, deletes the previous archive and packs the files of reportFilesOf into a
// new one. A file that can't be read is left out. The archive's path, or an empty text when it
// couldn't be packed or written. Raises what the listing of the logs folder raises.
std::string buildInfoArchiveWith(const ReportPaths& paths,
                                 const std::vector<Collector>& collectors);
// The same for this installation; the flag is not read.
std::string buildInfoArchive(bool flag);

// Builds the archive and shows the tmp folder, or the logs folder when the build threw. When the
// folder can't be shown, a message box says so.
void collectInformationWith(const ReportPaths& paths, const std::function<std::string()>& build);
