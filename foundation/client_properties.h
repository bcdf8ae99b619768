#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

// The user's settings other than the language: named text values in a small file of sorted
// key=value lines in the profile folder. Nothing is kept in memory: every read goes to the file
// and every write rewrites it whole, keeping keys that the panel doesn't know.

// The settings file's name, in the profile folder.
extern const std::string clientPropertiesFileName;
// The keys of the settings file. The language key is known but neither read nor written.
extern const std::string portAutoselectKey;
extern const std::string useUncPathsKey;
extern const std::string languageKey;

class ClientProperties {
public:
    // The value as it stands in the file. Throws ClientPropertyNotSet when the key isn't there.
    std::string get(std::string_view key) const;
    // Stores the value, serialised with every other set on the same file in this process.
    // Throws BasicException with code 306 when the file can't be written.
    void set(std::string_view key, std::string_view value) const;

    // The settings file, UTF-8.
    std::string filePath;
};

// One mutex per settings file of the process, made at the first set for a path and kept until
// the process ends.
extern std::map<std::string, std::mutex, std::less<>> fileLocks;

// The program's store: the settings file in the user's profile folder, fixed at start-up.
const ClientProperties& clientProperties();

// The two readers never throw and differ on purpose: a missing port autoselection reads as true and
// stays missing, a missing UNC setting reads as false and is written to the file as false.
bool isPortAutoselect(const ClientProperties& properties);
bool isUseUncPaths(const ClientProperties& properties);
bool isPortAutoselect();
bool isUseUncPaths();
