#include "host/held_port.h"

#include <cctype>

#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/detector/port_facts.h"
#include "host/detector/processes.h"
#include "host/detector/tcp_connections.h"

namespace heldport {

std::optional<Holder> portHolder(const PortFacts& facts, std::uint32_t port) {
    for (const PortRow& row : facts.rows) {
        if (row.state != listenState || row.port != port || row.processId == 0 ||
            facts.ours.count(row.processId) != 0) {
            continue;
        }
        if (row.processId == systemProcessId) {
            return Holder{HolderKind::httpService, "http.sys", row.processId};
        }
        if (const auto service = facts.services.find(row.processId);
            service != facts.services.end()) {
            return Holder{HolderKind::service, service->second, row.processId};
        }
        if (const auto program = facts.programs.find(row.processId);
            program != facts.programs.end()) {
            return Holder{HolderKind::program, program->second, row.processId};
        }
        return Holder{HolderKind::ended, std::string(), row.processId};
    }
    if (facts.bindRefused) {
        return Holder{HolderKind::reserved, std::string(), 0};
    }
    return std::nullopt;
}

std::optional<std::uint32_t> configuredPort(std::string_view configuration) {
    std::size_t at = 0;
    while (at < configuration.size()) {
        std::size_t end = configuration.find('\n', at);
        if (end == std::string_view::npos) {
            end = configuration.size();
        }
        std::string_view line = configuration.substr(at, end - at);
        at = end + 1;
        line = line.substr(0, line.find('#'));
        const std::size_t word = line.find_first_not_of(" \t\r");
        if (word == std::string_view::npos || line.substr(word, 6) != "listen" ||
            word + 6 >= line.size() || (line[word + 6] != ' ' && line[word + 6] != '\t')) {
            continue;
        }
        std::string_view value = line.substr(word + 6);
        value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
        value = value.substr(0, value.find_first_of(" \t;\r"));
        const std::size_t colon = value.rfind(':');
        if (colon != std::string_view::npos) {
            value.remove_prefix(colon + 1);
        }
        if (value.empty() || value.size() > 5) {
            return std::nullopt;
        }
        std::uint32_t port = 0;
        for (const char digit : value) {
            if (!std::isdigit(static_cast<unsigned char>(digit))) {
                return std::nullopt;
            }
            port = port * 10 + static_cast<std::uint32_t>(digit - '0');
        }
        if (port == 0 || port > 65535) {
            return std::nullopt;
        }
        return port;
    }
    return std::nullopt;
}

std::string heldPortSentence(std::uint32_t port) {
    return panelMessages.format(panelmsg::portHeld, std::to_string(port).c_str());
}

std::string holderLine(const Holder& holder) {
    switch (holder.kind) {
    case HolderKind::program:
        return panelMessages.format(panelmsg::portHeldByProgram, utf8ToCp1251(holder.name).c_str(),
                                    std::to_string(holder.processId).c_str());
    case HolderKind::service:
        return panelMessages.format(panelmsg::portHeldByService, utf8ToCp1251(holder.name).c_str());
    case HolderKind::httpService:
        return panelMessages.text(panelmsg::portHeldByHttpService);
    case HolderKind::reserved:
        return panelMessages.text(panelmsg::portReserved);
    case HolderKind::ended:
        break;
    }
    return std::string();
}

std::string heldPortText(std::uint32_t port, const std::optional<Holder>& holder,
                         const char* separator) {
    std::string text = heldPortSentence(port);
    const std::string line = holder ? holderLine(*holder) : std::string();
    if (!line.empty()) {
        text += separator + line;
    }
    return text;
}

namespace {

// Paths compare alike whatever their slashes and the case of their letters: the system and the
// registry may spell the same folder differently.
std::string comparable(std::string path) {
    for (char& each : path) {
        each =
            each == '\\' ? '/' : static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
    }
    return path;
}

} // namespace

std::vector<std::uint32_t> installationProcesses(const std::string& exePath) {
    const std::string ourPath = comparable(exePath);
    std::vector<std::uint32_t> pids;
    for (const detector::ProcessEntry& entry : detector::listProcesses()) {
        const std::optional<std::string> image = detector::native::processImagePath(entry.pid);
        if (image && comparable(*image) == ourPath) {
            pids.push_back(entry.pid);
        }
    }
    return pids;
}

PortFacts gatherPortFacts(std::uint32_t port, const std::string& exePath) {
    PortFacts facts;
    std::vector<detector::ProcessEntry> processes;
    try {
        processes = detector::listProcesses();
    } catch (const std::exception&) {
    }
    const std::string ourPath = comparable(exePath);
    for (const detector::ProcessEntry& entry : processes) {
        facts.programs.emplace(entry.pid, utf16ToUtf8(entry.exeName));
        const std::optional<std::string> image = detector::native::processImagePath(entry.pid);
        if (image && comparable(*image) == ourPath) {
            facts.ours.insert(entry.pid);
        }
    }
    try {
        for (const detector::TcpTableRow& row : detector::native::readTcpTable()) {
            facts.rows.push_back(
                {row.state, detector::connectionOfRow(row).localPort, row.owningPid, false});
        }
    } catch (const std::exception&) {
    }
    try {
        for (const detector::TcpTableRow& row : detector::native::readTcp6Table()) {
            facts.rows.push_back(
                {row.state, detector::connectionOfRow(row).localPort, row.owningPid, true});
        }
    } catch (const std::exception&) {
    }
    bool listened = false;
    for (const PortRow& row : facts.rows) {
        listened = listened || (row.state == listenState && row.port == port && row.processId != 0);
    }
    if (listened) {
        facts.services = detector::native::serviceNamesByProcess();
    } else {
        facts.bindRefused = detector::native::bindRefused(port);
    }
    return facts;
}

} // namespace heldport
