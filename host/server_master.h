#pragma once

#include <cstdint>
#include <optional>

#include "host/detector/processes.h"

// The server's master process as the pid file names it, asked at every tick by the status and by
// the menu's choice between Run and Stop. The first question after the pid file appeared or
// changed looks for the master in a process snapshot and then holds it
// (detector::ProcessIdentity); while the pid file keeps its size and time stamp and the held
// process runs, every later question is answered from what is held, without a snapshot. A master
// that ended, or a pid file that changed or went, makes the next question look again.
struct ServerMaster {
    // The pid that the pid file holds; 0 when it can't be read.
    std::uint32_t pid = 0;
    // The pid file names a living process, whatever its name.
    bool running = false;
    // Whole seconds since that process was created; 0 when it isn't running or can't be asked.
    std::uint64_t seconds = 0;
    // Whether the process asked about alongside the master still runs; none when it wasn't asked.
    std::optional<bool> alongsideRunning;
};

// Never raises: a missing or broken pid file and a failed snapshot read as no master. A process
// given alongside (the server's worker that the status holds) is asked about in the same question
// as the held master while both run, so that a warm tick asks the system once.
ServerMaster serverMaster(const detector::ProcessIdentity* alongside = nullptr);

// Lets go of the held master, so that the next question looks again: a start or stop begins.
void forgetServerMaster();
