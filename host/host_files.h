#pragma once

// Names of the files that the installation holds beside the control panel. They are plain C texts
// so that they can be used during static initialisation, when the installation path is first read.

// The server's executable: the file in the installation folder and the process name.
inline constexpr const char* hostFileName = "CorvaniteHost.exe";
// The server writes its master's pid here and removes the file when it ends.
inline constexpr const char* pidFileName = "nginx.pid";
// The addon library's name without its extension.
inline constexpr const char* libraryBaseName = "Corvanite";
