#pragma once

// The ids of the rows of common_messages.cpp that the program names in its code; the English
// words follow each one. The catalogue holds a row for every one of them (its table checks
// that when it is compiled).
namespace commonmsg {

inline constexpr const char filePathNotFound[] = "CV-0002";     // Find file \"%1\" path error
inline constexpr const char functionNotLoaded[] = "CV-0003";    // Error loading function \"%1\"
inline constexpr const char systemFolderNotFound[] = "CV-0004"; // Error getting full directory path
inline constexpr const char fileNotRead[] = "CV-0006";          // Error reading file \"%1\"
inline constexpr const char fileNotWritten[] = "CV-0007";       // Error writing file \"%1\"
inline constexpr const char folderNotRead[] = "CV-0008";        // Error reading folder \"%1\"
inline constexpr const char libraryNotRead[] = "CV-0009";       // Error reading library \"%1\"
inline constexpr const char fileTooSmall[] = "CV-0010"; // Size of file \"%1\" is less than allowed
inline constexpr const char fileTooLarge[] =
    "CV-0011"; // Size of file \"%1\" is larger than allowed

inline constexpr const char* named[] = {filePathNotFound, functionNotLoaded, systemFolderNotFound,
                                        fileNotRead,      fileNotWritten,    folderNotRead,
                                        libraryNotRead,   fileTooSmall,      fileTooLarge};

} // namespace commonmsg
