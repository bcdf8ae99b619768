#include "panel/display_scale.h"

#include <windows.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

DisplayScale screenDisplayScale() {
    DisplayScale scale;
    HDC screen = GetDC(nullptr);
    if (screen == nullptr) {
        throw BasicException(serviceMessages.text(servicemsg::interfaceNotInitialised));
    }
    scale.horizontalDpi = GetDeviceCaps(screen, LOGPIXELSX);
    scale.verticalDpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return scale;
}
