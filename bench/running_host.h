#pragma once

class CorvaniteHost;

// The host of the benchmark process with its server up, started at the first call in the
// installation that the registry's "Path" names (scripts/bench.sh prepares it and stops the server
// afterwards). Ends the process when the server doesn't come up: the numbers would mean nothing.
CorvaniteHost& runningHost();
