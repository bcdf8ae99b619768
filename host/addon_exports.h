#pragma once

// The two exports of the addon library "Corvanite.dll", as this program calls them. Both use the
// C calling convention, which is what the compilers of every target of the product give a plain
// function pointer (on i686 as well), so the types need no attribute.

// Answers a JSON request for a service domain with a zero-terminated JSON text that the library
// owns, or with null.
using AddonProcessQuery = char* (*)(const char* request, const char* domain);
// Gives an answer of AddonProcessQuery back to the library.
using AddonFree = void (*)(char* answer);
