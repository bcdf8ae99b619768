#include "panel/display_scale.h"

#include <windows.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

DisplayScale screenDisplayScale() {
    HDC screen = GetDC(nullptr);
    if (screen == nullptr) {
        throw BasicException(serviceMessages.text(servicemsg::interfaceNotInitialised));
    }
    const int horizontal = GetDeviceCaps(screen, LOGPIXELSX);
    const int vertical = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return displayScaleOf(horizontal, vertical);
}
