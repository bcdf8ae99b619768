#include "diagnostics/program_files.h"

#include "foundation/filesys.h"

std::string programFilesAs32Bit() {
    return filesys::programFilesFolder();
}
