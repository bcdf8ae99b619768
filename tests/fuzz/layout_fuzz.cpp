// The layout file CVHControlPanel.json with arbitrary bytes, and every reader over what it holds.
// Reading the document fails as BasicException "CVCP-006013" alone, whatever went wrong. The
// readers stand under no guard: a faulty section fails with the JSON library's exceptions, a text
// that is not in the catalogue with the catalogue's std::out_of_range; nothing else may come out.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "panel/app_data_manager.h"
#include "tests/fuzz/fuzz_check.h"
#include "tests/fuzz/fuzz_installation.h"

namespace {

const char* const layoutName = "CVHControlPanel.json";

// The document as the program reads it: the first JSON value of the stream, whatever follows.
nlohmann::json documentOf(const std::uint8_t* data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    nlohmann::json document;
    try {
        stream >> document;
    } catch (const nlohmann::json::exception&) {
        return nullptr;
    }
    return document;
}

// Walks the document with a list of its own, since a hostile one may nest deeper than the stack.
bool namesServerState(const nlohmann::json& document) {
    std::vector<const nlohmann::json*> pending{&document};
    while (!pending.empty()) {
        const nlohmann::json& value = *pending.back();
        pending.pop_back();
        if (value.is_string()) {
            const auto& text = value.get_ref<const std::string&>();
            if (text == "time" || text == "address" || text == "status") {
                return true;
            }
        } else if (value.is_structured()) {
            for (const nlohmann::json& element : value) {
                pending.push_back(&element);
            }
        }
    }
    return false;
}

std::optional<utils::AppDataManager> load(const std::string& path) {
    try {
        return utils::AppDataManager(path, DisplayScale{96, 120});
    } catch (const BasicException& failure) {
        fuzzCheck(std::string_view(failure.what()) == panelMessages.text("CVCP-006013"),
                  "a document that can't be read fails with the layout's own words");
        return std::nullopt;
    }
}

// Runs one reader; its failures are the library's or the catalogue's.
template <typename Reader> void readSection(Reader read) {
    try {
        read();
    } catch (const nlohmann::json::exception&) {
    } catch (const std::out_of_range& failure) {
        fuzzCheck(std::string_view(failure.what()) == "invalid map<K, T> key",
                  "out of range only for a text that is not in the catalogue");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzInstallation();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (namesServerState(documentOf(data, size))) {
        return -1;
    }
    writeInstallationFile(layoutName, std::string_view(reinterpret_cast<const char*>(data), size));
    const std::optional<utils::AppDataManager> layout = load(fuzzInstallation() + "/" + layoutName);
    if (!layout) {
        return 0;
    }
    readSection([&] { layout->window(); });
    readSection([&] { layout->menuItems(); });
    readSection([&] { layout->tabpanels(); });
    readSection([&] { layout->comboboxes(); });
    readSection([&] { layout->checkboxes(); });
    readSection([&] { layout->syslinks(); });
    readSection([&] { layout->buttons(); });
    readSection([&] { layout->labels(); });
    return 0;
}
