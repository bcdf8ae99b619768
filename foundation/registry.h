#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The program's three doors to the Windows registry. Each call opens the key, does its one read or
// write and closes the key again. Nothing here throws for a registry failure: a read gives an
// empty optional and a write gives false. Keys are never created.

// The hives in use, with their Windows handle values.
enum class RegistryHive : std::uint32_t { CurrentUser = 0x80000001u, LocalMachine = 0x80000002u };

// The value's data as it is stored, whatever its type: a REG_DWORD gives its four bytes.
std::optional<std::vector<std::uint8_t>>
readRegistryBytes(RegistryHive hive, std::string_view keyPath, const char* valueName);

// The value as UTF-8 text, up to its first zero: a text value with every letter it holds, any
// other as its bytes read as code page 1251.
std::optional<std::string> readRegistryText(RegistryHive hive, std::string_view keyPath,
                                            std::string_view valueName);

// Stores UTF-8 text as a REG_SZ value in code page 1251, without a terminating zero. Letters
// outside that code page become question marks.
bool writeRegistryText(RegistryHive hive, std::string_view keyPath, std::string_view valueName,
                       std::string_view text);

// The platform bodies under the functions above; callers use those.
namespace registry::native {

std::optional<std::vector<std::uint8_t>> readValue(RegistryHive hive, const std::string& keyPath,
                                                   const char* valueName);
// The value as UTF-8 text up to its first zero. A text value comes through the system's wide
// call, so that a folder's name keeps every letter whatever the system's code page; a value of
// another type is read as code page 1251 bytes.
std::optional<std::string> readTextValue(RegistryHive hive, const std::string& keyPath,
                                         const std::string& valueName);
bool writeTextValue(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
                    const std::string& cp1251);

// Bytes up to the first zero, read as code page 1251.
std::optional<std::string> textOfBytes(const std::vector<std::uint8_t>& bytes);

} // namespace registry::native
