#include "diagnostics/probe_commands.h"

// ping counts its echoes with -c here; -n would only turn off name look-ups and ping forever.
const char* const pingCommandFormat = "ping -c 1 %1";
const char* const nslookupCommandFormat = "nslookup %1";
