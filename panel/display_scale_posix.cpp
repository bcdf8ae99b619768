#include "panel/display_scale.h"

#include <cstdlib>
#include <string>

#include "foundation/text.h"

// Without a screen to ask, the design unit holds, unless the environment names another density:
// that is how a larger screen is tried out on a system without one.
DisplayScale screenDisplayScale() {
    DisplayScale scale;
    if (const char* dpi = std::getenv("CORVANITE_DPI"); dpi != nullptr && *dpi != '\0') {
        scale.horizontalDpi = readInt(dpi);
        scale.verticalDpi = scale.horizontalDpi;
    }
    return scale;
}
