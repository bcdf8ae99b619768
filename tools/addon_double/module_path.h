#pragma once

#include <filesystem>

// The full path of the double's own library file.
std::filesystem::path modulePath();
