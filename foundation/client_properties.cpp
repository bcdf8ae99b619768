#include "foundation/client_properties.h"

#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

const std::string clientPropertiesFileName = ".corvanite_settings";
const std::string portAutoselectKey = "cv_port_autoselect";
const std::string useUncPathsKey = "cv_use_unc_paths";
const std::string languageKey = "cv_language";

std::map<std::string, std::mutex, std::less<>> fileLocks;

namespace {

using Properties = std::map<std::string, std::string>;

constexpr std::uint32_t maximumFileSize = 104857600;
constexpr std::uint16_t writeFailureCode = 306;

// A failure of profileFolder here ends the program: there is no settings file without it.
const ClientProperties programProperties{
    filesys::joinPath(filesys::profileFolder(), clientPropertiesFileName.c_str())};

// The map's own lookup is guarded, so that two first sets of one path from two threads don't race
// inside it; the entries themselves are never removed.
std::mutex& fileLockOf(const std::string& path) {
    static std::mutex mapGuard;
    const std::lock_guard guard(mapGuard);
    return fileLocks[path];
}

// A file that is missing, locked or over the limit is an empty store.
Properties load(const std::string& path) {
    std::string text;
    try {
        const std::vector<std::uint8_t> bytes = filesys::readFile(path, 0, maximumFileSize);
        text.assign(bytes.begin(), bytes.end());
    } catch (const filesys::FileIOError&) {
        return {};
    }
    return parseKeyValues(text.c_str(), '=', false);
}

std::string linesOf(const Properties& properties) {
    std::string text;
    for (const auto& [key, value] : properties) {
        text.append(key).append("=").append(value).append("\n");
    }
    return text;
}

void save(const std::string& path, const Properties& properties) {
    const std::string text = linesOf(properties);
    if (text.size() > maximumFileSize) {
        throw BasicException(writeFailureCode, serviceMessages.text(servicemsg::dataTooLarge), "");
    }
    try {
        filesys::replaceFile(path, std::vector<std::uint8_t>(text.begin(), text.end()));
    } catch (const filesys::FileIOError&) {
        throw BasicException(writeFailureCode, serviceMessages.text(servicemsg::propertyNotWritten),
                             "");
    }
}

} // namespace

std::string ClientProperties::get(std::string_view key) const {
    const Properties properties = load(filePath);
    const auto found = properties.find(std::string(key));
    if (found == properties.end()) {
        throw ClientPropertyNotSet();
    }
    return found->second;
}

// The new value joins what the file holds now; a file that can't be read loses its other keys.
void ClientProperties::set(std::string_view key, std::string_view value) const {
    const std::lock_guard lock(fileLockOf(filePath));
    Properties properties = load(filePath);
    properties[std::string(key)] = std::string(value);
    save(filePath, properties);
}

const ClientProperties& clientProperties() {
    return programProperties;
}

bool isPortAutoselect(const ClientProperties& properties) {
    try {
        return parseBool(properties.get(portAutoselectKey));
    } catch (...) {
        return true;
    }
}

bool isUseUncPaths(const ClientProperties& properties) {
    try {
        return parseBool(properties.get(useUncPathsKey));
    } catch (...) {
        try {
            properties.set(useUncPathsKey, boolText(false));
        } catch (...) {
        }
        return false;
    }
}

bool isPortAutoselect() {
    return isPortAutoselect(clientProperties());
}

bool isUseUncPaths() {
    return isUseUncPaths(clientProperties());
}
