#include "diagnostics/program_files.h"

#include <shlobj.h>

#include "foundation/filesys.h"

std::string programFilesAs32Bit() {
    constexpr bool is64Bit = sizeof(void*) == 8;
    return filesys::specialFolder(is64Bit ? CSIDL_PROGRAM_FILESX86 : CSIDL_PROGRAM_FILES);
}
