#include "foundation/registry.h"

#include "foundation/text.h"

#include <algorithm>

std::optional<std::vector<std::uint8_t>>
readRegistryBytes(RegistryHive hive, std::string_view keyPath, const char* valueName) {
    return registry::native::readValue(hive, std::string(keyPath), valueName);
}

// A value of another type than text is read as text all the same.
std::optional<std::string> readRegistryText(RegistryHive hive, std::string_view keyPath,
                                            std::string_view valueName) {
    return registry::native::readTextValue(hive, std::string(keyPath), std::string(valueName));
}

bool writeRegistryText(RegistryHive hive, std::string_view keyPath, std::string_view valueName,
                       std::string_view text) {
    return registry::native::writeTextValue(hive, std::string(keyPath), std::string(valueName),
                                            utf8ToCp1251(text));
}

namespace registry::native {

std::optional<std::string> textOfBytes(const std::vector<std::uint8_t>& bytes) {
    const auto end = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
    return cp1251ToUtf8(std::string(bytes.begin(), end));
}

} // namespace registry::native
