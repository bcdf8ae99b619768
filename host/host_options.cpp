#include "host/host_options.h"

#include "foundation/client_properties.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

constexpr const char* caption = "Corvanite";

} // namespace

void setPortAutoselect(bool on) {
    try {
        clientProperties().set(portAutoselectKey, boolText(on));
        if (!on) {
            showMessageBox(caption, panelMessages.text("CVCP-006105"), 0);
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
