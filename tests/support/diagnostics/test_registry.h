#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "foundation/registry.h"

// A registry of the test's own for as long as the object lives: both hives start empty, and
// whatever the program reads from them is what the test put there. On Windows the two predefined
// keys of this process are redirected to fresh keys below the tests' own key; on POSIX the
// registry's folder tree is moved to a temporary folder. One at a time per process.
class ScopedTestRegistry {
public:
    ScopedTestRegistry();
    ~ScopedTestRegistry();
    ScopedTestRegistry(const ScopedTestRegistry&) = delete;
    ScopedTestRegistry& operator=(const ScopedTestRegistry&) = delete;

    void createKey(RegistryHive hive, const std::string& keyPath);
    // A string value holding the text in code page 1251; the key is created as needed.
    void setText(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
                 const std::string& utf8);
    // A DWORD value; the key is created as needed.
    void setDword(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
                  std::uint32_t value);

private:
    struct State;
    std::unique_ptr<State> state_;
};
