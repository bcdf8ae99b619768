#pragma once

#include <cstdint>

#include <nlohmann/json.hpp>

// Numbers of the layout file. A floating point number is truncated toward zero; a value of
// another type fails with the JSON library's own words ("type must be number, but is string").

// A widget's "id" and "commandId": integers and floating point numbers.
std::int32_t identifierNumber(const nlohmann::json& value);

// Sizes, positions, "tabIndex", "updateTime" and a menu item's "commandId": a boolean counts as
// well, false 0 and true 1.
std::int32_t lenientNumber(const nlohmann::json& value);

// The lenient number under the key of an object, or 0 when the key is absent. A value that is no
// object fails as the library's value() does ("cannot use value() with array").
std::int32_t numberOrZero(const nlohmann::json& object, const char* key);
