#pragma once

// The ids of the rows of service_messages.cpp that the program names in its code; the English
// words follow each one. The catalogue holds a row for every one of them (its table checks
// that when it is compiled).
namespace servicemsg {

inline constexpr const char dataTooLarge[] = "CV-002001";            // Data size more than allowed
inline constexpr const char propertyNotWritten[] = "CV-002002";      // Write client property error
inline constexpr const char propertyNotSet[] = "CV-002003";          // Client property is not set
inline constexpr const char interfaceNotInitialised[] = "CV-003001"; // GUI initialization error

inline constexpr const char* named[] = {dataTooLarge, propertyNotWritten, propertyNotSet,
                                        interfaceNotInitialised};

} // namespace servicemsg
