#include "diagnostics/event_log_export.h"

#include "diagnostics/report_paths.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "host/detector/launch_process.h"
#include "host/detector/wait_until.h"

namespace {

constexpr std::int64_t exportSeconds = 5;

} // namespace

void exportEventLogWith(const std::optional<std::string>& toolFolder,
                        const std::string& eventLogFile) {
    filesys::deleteFile(eventLogFile);
    if (!toolFolder) {
        return;
    }
    const std::string tool = filesys::joinPath(*toolFolder, "wevtutil.exe");
    if (!filesys::exists(tool.c_str())) {
        return;
    }
    // The leading blank is part of the arguments, as the tool's command line expects them.
    const std::string arguments =
        substitutePlaceholders(" export-log Application \"%1\"", eventLogFile.c_str());
    if (!detector::launchProcess(tool, arguments)) {
        return;
    }
    // Running out of time is no failure: the report goes on as if the file were there.
    detector::waitUntil(exportSeconds,
                        [&eventLogFile] { return filesys::exists(eventLogFile.c_str()); });
}

void exportEventLog() {
    exportEventLogWith(systemToolFolder(), reportPaths().eventLogFile);
}
