#pragma once

// How tests steer the addon library double "Corvanite.dll". Every switch is a side file in the
// folder of the loaded library, named after the library's file name with a suffix.

#include "addon_double_version.h"

// The version that the double reports when nothing else is asked for. On Windows its version
// resource carries the same four numbers.
inline constexpr const char* addonDoubleVersion = ADDON_DOUBLE_VERSION_TEXT;

// Holds another version for the reply {"answer":{"version":"<v>"}}.
inline constexpr const char* addonVersionSuffix = ".version";
// Holds the whole reply, sent verbatim: broken JSON, an answer without a version, anything.
inline constexpr const char* addonReplySuffix = ".reply";
// Present: the query answers with a null pointer.
inline constexpr const char* addonNullSuffix = ".null";
// Present: each call appends a line to it, "query <request> <domain>" or "free", so that a test
// sees what the program asked and that it handed the answer back.
inline constexpr const char* addonLogSuffix = ".log";
