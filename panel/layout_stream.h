#pragma once

#include <fstream>
#include <string>

// Opens the layout file for binary reading, shared with everyone. A file that can't be opened
// gives a failed stream, which the parser then meets as empty input. The path is UTF-8 and keeps
// every letter on its way.
std::ifstream openLayoutStream(const std::string& path);
