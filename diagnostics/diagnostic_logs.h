#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"

// The plain diagnostic logs that the information report leaves in the logs folder and packs.

// Carriage return and line feed, the line end of the logs and of the report's own lines.
extern const std::string lineBreak;

// Writes the text to "<name>.log" in the folder, replacing the file. Raises
// filesys::WriteFileError.
void writeLogFileIn(const std::string& logsFolder, const std::string& name,
                    const std::string& text);
// The same in the installation's logs folder.
void writeLogFile(const std::string& name, const std::string& text);

// Runs a command with a time-out in seconds and keeps what it wrote as the log of that name. A
// command that writes nothing, or overruns its time (it is left running), leaves an earlier log
// in place; a log that can't be written is given up silently. Raises detector::InternalError when
// the command can't be started.
void runProbe(const std::string& commandLine, std::int64_t seconds, const std::string& logName,
              const std::string& logsFolder);

// The text of tcp-connections.log: four labelled lines and an empty one per connection.
std::string connectionsLogText(const std::vector<detector::TcpConnection>& connections);

// The text of process-list.log: three labelled lines and an empty one per process.
std::string processListLogText(const std::vector<detector::ProcessEntry>& processes);

// The four probes of the report; each leaves its log behind.
void pingProbe();
void nslookupProbe();
// These two raise what reading the table or the process list raises, and what writing raises.
void tcpConnectionsProbe();
void processListProbe();
