#include "diagnostics/report_paths.h"

#include "foundation/filesys.h"
#include "host/host_facts.h"

ReportPaths reportPathsOf(const std::string& installPath) {
    ReportPaths paths;
    paths.installPath = installPath;
    paths.logsFolder = filesys::joinPath(installPath, "logs");
    paths.tmpFolder = filesys::joinPath(installPath, "tmp");
    paths.archivePath = filesys::systemPathForm(filesys::joinPath(paths.tmpFolder, "info.zip"));
    paths.configFile = filesys::joinPath(filesys::joinPath(installPath, "conf"), "nginx.conf");
    paths.eventLogFile = filesys::joinPath(paths.logsFolder, "Application.evtx");
    return paths;
}

ReportPaths reportPaths() {
    return reportPathsOf(installationPath());
}
