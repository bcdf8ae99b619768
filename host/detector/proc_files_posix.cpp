#include "host/detector/proc_files_posix.h"

#include <dirent.h>
#include <unistd.h>

#include <cctype>
#include <fstream>
#include <map>
#include <sstream>

#include "foundation/exceptions.h"

namespace detector::procfs {

namespace {

bool isNumber(const char* name) {
    if (*name == '\0') {
        return false;
    }
    for (; *name != '\0'; ++name) {
        if (!std::isdigit(static_cast<unsigned char>(*name))) {
            return false;
        }
    }
    return true;
}

} // namespace

std::vector<std::uint32_t> processIds() {
    DIR* folder = opendir("/proc");
    if (folder == nullptr) {
        throw InternalError();
    }
    std::vector<std::uint32_t> pids;
    while (const dirent* entry = readdir(folder)) {
        if (isNumber(entry->d_name)) {
            pids.push_back(static_cast<std::uint32_t>(std::stoul(entry->d_name)));
        }
    }
    closedir(folder);
    return pids;
}

std::vector<std::string> folderEntries(const std::string& path) {
    std::vector<std::string> names;
    DIR* folder = opendir(path.c_str());
    if (folder == nullptr) {
        return names;
    }
    while (const dirent* entry = readdir(folder)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    closedir(folder);
    return names;
}

std::optional<std::string> readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::ostringstream text;
    text << file.rdbuf();
    if (file.bad()) {
        return std::nullopt;
    }
    return text.str();
}

std::string commandName(const std::string& statText) {
    const std::size_t open = statText.find('(');
    const std::size_t close = statText.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open) {
        return "";
    }
    return statText.substr(open + 1, close - open - 1);
}

std::optional<std::vector<std::string>> statFields(std::uint32_t pid) {
    const std::optional<std::string> text = readText("/proc/" + std::to_string(pid) + "/stat");
    if (!text) {
        return std::nullopt;
    }
    // The command name may hold blanks and parentheses; the fields start behind its last ")".
    const std::size_t close = text->rfind(')');
    if (close == std::string::npos) {
        return std::nullopt;
    }
    std::istringstream rest(text->substr(close + 1));
    std::vector<std::string> fields;
    for (std::string field; rest >> field;) {
        fields.push_back(field);
    }
    if (fields.empty()) {
        return std::nullopt;
    }
    return fields;
}

std::optional<std::string> linkTarget(const std::string& path) {
    std::string target(4096, '\0');
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= target.size()) {
        return std::nullopt;
    }
    target.resize(static_cast<std::size_t>(length));
    return target;
}

namespace {

// The kernel's TCP states (1 established ... 12 new SYN received) as the Windows table numbers
// them (1 closed ... 12 delete TCB).
std::uint32_t tableState(unsigned kernelState) {
    constexpr std::uint32_t states[] = {0, 5, 3, 4, 6, 7, 11, 1, 8, 10, 2, 9, 4};
    return kernelState < std::size(states) ? states[kernelState] : 0;
}

// Which process holds each socket: the first one, in the order of /proc, with a descriptor that
// points at it. Sockets of processes that we may not look into stay without an owner.
std::map<std::string, std::uint32_t> socketOwners() {
    std::map<std::string, std::uint32_t> owners;
    for (const std::uint32_t pid : processIds()) {
        const std::string folder = "/proc/" + std::to_string(pid) + "/fd/";
        for (const std::string& descriptor : folderEntries(folder)) {
            const std::optional<std::string> target = linkTarget(folder + descriptor);
            if (target && target->rfind("socket:[", 0) == 0) {
                owners.emplace(target->substr(8, target->size() - 9), pid);
            }
        }
    }
    return owners;
}

} // namespace

// An empty table has no sockets to own, so /proc isn't walked for it.
std::vector<TcpTableRow> readKernelTcpTable(const std::string& path,
                                            const ReadEndpoints& readEndpoints) {
    const std::optional<std::string> text = readText(path);
    if (!text) {
        throw InternalError();
    }
    std::istringstream lines(*text);
    std::string line;
    std::getline(lines, line); // the column heads
    std::vector<std::pair<TcpTableRow, std::string>> rows;
    try {
        while (std::getline(lines, line)) {
            std::istringstream fields(line);
            std::string slot, local, remote, state, queues, timer, retransmits, uid, timeout, inode;
            if (!(fields >> slot >> local >> remote >> state >> queues >> timer >> retransmits >>
                  uid >> timeout >> inode)) {
                continue;
            }
            TcpTableRow row;
            if (!readEndpoints(local, remote, row)) {
                continue;
            }
            row.state = tableState(static_cast<unsigned>(std::stoul(state, nullptr, 16)));
            rows.emplace_back(row, inode);
        }
    } catch (const std::logic_error&) {
        throw InternalError();
    }
    const std::map<std::string, std::uint32_t> owners =
        rows.empty() ? std::map<std::string, std::uint32_t>() : socketOwners();
    std::vector<TcpTableRow> table;
    for (auto& [row, inode] : rows) {
        const auto owner = owners.find(inode);
        row.owningPid = owner == owners.end() ? 0 : owner->second;
        table.push_back(row);
    }
    return table;
}

} // namespace detector::procfs
