#pragma once

// Names of the files that the installation holds beside the control panel. They are plain C texts,
// constant from the program's start, so that any floor and any thread may use them at any time.

// The server's executable: the file in the installation folder and the process name.
inline constexpr const char* hostFileName = "CorvaniteHost.exe";
// The server writes its master's pid here and removes the file when it ends.
inline constexpr const char* pidFileName = "nginx.pid";
// The addon library's name without its extension.
inline constexpr const char* libraryBaseName = "Corvanite";
