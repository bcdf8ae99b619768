#pragma once

// The command lines of the two network probes, with %1 for the service domain.
extern const char* const pingCommandFormat;
extern const char* const nslookupCommandFormat;
