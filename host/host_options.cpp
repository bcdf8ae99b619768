#include "host/host_options.h"

#include <cstring>

#include "foundation/client_properties.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/user_shell.h"

namespace {

constexpr const char* caption = "Corvanite";

} // namespace

void setPortAutoselect(bool on) {
    try {
        clientProperties().set("cv_port_autoselect", boolText(on));
        if (!on) {
            const char* warning = panelMessages.text("CVCP-006105");
            showMessageBox(caption, std::strlen(caption), warning, std::strlen(warning), 0, 0);
        }
    } catch (...) {
    }
}

void setUseUncPaths(bool on) {
    try {
        clientProperties().set("cv_use_unc_paths", boolText(on));
    } catch (...) {
    }
}
