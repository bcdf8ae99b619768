#include "diagnostics/probe_commands.h"

const char* const pingCommandFormat = "ping %1 -n 1";
const char* const nslookupCommandFormat = "nslookup %1";
