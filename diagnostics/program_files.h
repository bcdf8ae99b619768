#pragma once

#include <string>

// The Program Files folder as the shipped 32-bit program sees it, which decides the bitness in
// the report and where Opera is looked for. A 64-bit build asks for the x86 folder to see the same.
std::string programFilesAs32Bit();
