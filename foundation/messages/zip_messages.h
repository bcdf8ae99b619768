#pragma once

// The ids of the rows of zip_messages.cpp that the program names in its code; the English
// words follow each one. The catalogue holds a row for every one of them (its table checks
// that when it is compiled).
namespace zipmsg {

inline constexpr const char packError[] = "Z-0002"; // Archive packing error

inline constexpr const char* named[] = {packError};

} // namespace zipmsg
