#include "bench/process_floor.h"
#include "host/detector/processes.h"

void askCreationTime(std::uint32_t pid) {
    detector::native::processCreationTime(pid);
}
