#include "panel/command_progress.h"

std::atomic<bool> commandInProgress{false};
