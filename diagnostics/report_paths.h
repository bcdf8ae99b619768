#pragma once

#include <string>

// Where the reports find and leave their files, all below the installation folder.
struct ReportPaths {
    std::string installPath;
    // The server's logs, and the diagnostic logs beside them.
    std::string logsFolder;
    std::string tmpFolder;
    // info.zip in the tmp folder, in the system's own form: with backslashes on Windows.
    std::string archivePath;
    std::string configFile;
    std::string eventLogFile;
};

ReportPaths reportPathsOf(const std::string& installPath);

// The paths of this installation.
ReportPaths reportPaths();
