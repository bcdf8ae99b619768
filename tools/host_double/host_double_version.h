#pragma once

// The server double's version, in the two forms that the tests and the version resource need.
// Plain macros, since the resource compiler reads this file too.
#define HOST_DOUBLE_VERSION_NUMBERS 1, 3, 8, 2
#define HOST_DOUBLE_VERSION_TEXT "1.3.8.2"
