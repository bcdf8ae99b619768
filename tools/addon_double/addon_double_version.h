#pragma once

// The double's version, in the two forms that the reply and the version resource need. Plain
// macros, since the resource compiler reads this file too.
#define ADDON_DOUBLE_VERSION_NUMBERS 1, 4, 2, 7
#define ADDON_DOUBLE_VERSION_TEXT "1.4.2.7"
