#include "panel/display_scale.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include "foundation/text.h"

// Without a screen to ask, the design unit holds, unless the environment names another density:
// that is how a larger screen is tried out on a system without one.
DisplayScale screenDisplayScale() {
    if (const char* dpi = std::getenv("CORVANITE_DPI"); dpi != nullptr && *dpi != '\0') {
        const std::int32_t density = readInt(dpi);
        return displayScaleOf(density, density);
    }
    return DisplayScale{};
}
