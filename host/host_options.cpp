#include "host/host_options.h"

#include "foundation/client_properties.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

void setPortAutoselect(bool on) {
    try {
        clientProperties().set(portAutoselectKey, boolText(on));
        if (!on) {
            showMessageBox(productName, panelMessages.text(panelmsg::portAutoselectOff),
                           MessageBoxKind::error);
        }
    } catch (...) {
    }
}

void setUseUncPaths(bool on) {
    try {
        clientProperties().set(useUncPathsKey, boolText(on));
    } catch (...) {
    }
}
