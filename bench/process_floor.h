#pragma once

#include <cstdint>

// The least that a warm status refresh can cost: one question to the system about the master's
// creation time. On Windows one OpenProcess and GetProcessTimes pair, elsewhere one read of the
// process's stat file.
void askCreationTime(std::uint32_t pid);
