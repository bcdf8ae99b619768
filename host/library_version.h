#pragma once

#include <string>

// The version that the addon library in the installation folder reports for itself, or "-" when it
// can't be loaded or gives no usable answer. Loads and unloads the library on every call; never
// raises.
std::string libraryVersion();
