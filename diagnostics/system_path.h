#pragma once

#include <string>

// A path in the form the system writes it: with backslashes on Windows, as it stands elsewhere.
std::string systemPathForm(std::string path);
