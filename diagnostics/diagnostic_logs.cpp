#include "diagnostics/diagnostic_logs.h"

#include <optional>
#include <sstream>

#include "diagnostics/name_lookup.h"
#include "diagnostics/report_paths.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/detector/run_and_capture.h"
#include "host/host_facts.h"

const std::string lineBreak = "\r\n";

namespace {

const char* const logExtension = ".log";
constexpr std::int64_t pingSeconds = 5;
constexpr std::int64_t nslookupSeconds = 2;

std::string addressText(std::uint32_t address, std::uint32_t port) {
    const std::string dotted = address == 0 ? "0.0.0.0" : detector::ipv4Text(address);
    return dotted + ":" + std::to_string(port);
}

void networkProbe(const char* format, std::int64_t seconds, const std::string& logName) {
    const std::string commandLine = substitutePlaceholders(format, ServiceDomain.c_str());
    runProbe(commandLine, seconds, logName, reportPaths().logsFolder);
}

} // namespace

void writeLogFileIn(const std::string& logsFolder, const std::string& name,
                    const std::string& text) {
    const std::string fileName = name + logExtension;
    filesys::writeFile(filesys::joinPath(logsFolder, fileName.c_str()),
                       std::vector<std::uint8_t>(text.begin(), text.end()));
}

void writeLogFile(const std::string& name, const std::string& text) {
    writeLogFileIn(reportPaths().logsFolder, name, text);
}

void runProbe(const std::string& commandLine, std::int64_t seconds, const std::string& logName,
              const std::string& logsFolder) {
    const std::optional<std::string> output = detector::runAndCapture(commandLine, seconds);
    if (!output) {
        return;
    }
    try {
        writeLogFileIn(logsFolder, logName, *output);
    } catch (...) {
        // The log is a nice-to-have: the report goes on without it.
    }
}

std::string connectionsLogText(const std::vector<detector::TcpConnection>& connections) {
    std::ostringstream text;
    for (const detector::TcpConnection& connection : connections) {
        text << "Local address:  " << addressText(connection.localAddress, connection.localPort)
             << lineBreak;
        text << "Remote address: " << addressText(connection.remoteAddress, connection.remotePort)
             << lineBreak;
        text << "State:          " << connection.stateName << lineBreak;
        text << "Process ID:     " << connection.processId << lineBreak;
        text << lineBreak;
    }
    return text.str();
}

std::string processListLogText(const std::vector<detector::ProcessEntry>& processes) {
    std::ostringstream text;
    for (const detector::ProcessEntry& process : processes) {
        text << "Name:      " << utf16ToUtf8(process.exeName) << lineBreak;
        text << "ID:        " << process.pid << lineBreak;
        text << "Parent ID: " << process.parentPid << lineBreak;
        text << lineBreak;
    }
    return text.str();
}

void pingProbe() {
    networkProbe(pingCommandFormat, pingSeconds, "ping");
}

void nslookupProbe() {
    networkProbe(nslookupCommandFormat, nslookupSeconds, "nslookup");
}

void tcpConnectionsProbe() {
    writeLogFile("tcp-connections", connectionsLogText(detector::tcpConnections()));
}

void processListProbe() {
    writeLogFile("process-list", processListLogText(detector::listProcesses()));
}
