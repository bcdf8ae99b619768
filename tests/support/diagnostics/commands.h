#pragma once

#include <string>

// Command lines for the probe tests that behave alike on every system.

// Writes a few words to its standard output and ends.
std::string printingCommand();
// Ends at once without writing anything.
std::string silentCommand();
// Writes for several seconds before it ends.
std::string slowCommand();
// Names a program that doesn't exist.
std::string missingCommand();
