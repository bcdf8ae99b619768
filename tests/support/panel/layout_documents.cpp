#include "tests/support/panel/layout_documents.h"

#include <fstream>

using nlohmann::json;

namespace {

json disposition(int x, int y, int width, int height) {
    return {{"position", {{"x", x}, {"y", y}}}, {"size", {{"x", width}, {"y", height}}}};
}

} // namespace

json smallLayoutDocument() {
    return {
        {"window",
         {{"title", "CVCP-001001"},
          {"size", {{"x", 480}, {"y", 360}}},
          {"className", "CVHControlPanel"},
          {"updateTime", 1000}}},
        {"menu",
         {{"items",
           {{{"commandId", 4}, {"text", "CVCP-003001"}},
            {{"commandId", 1}, {"text", "CVCP-000001"}},
            {{"commandId", 2}, {"text", "CVCP-000002"}},
            {{"commandId", 6}, {"text", "CVCP-003002"}}}}}},
        {"widgets",
         {{"tabpanels",
           {{{"id", 9},
             {"disposition", disposition(0, 0, 470, 300)},
             {"tabIndex", -1},
             {"tabs", {"CVCP-002001", "CVCP-002002"}}}}},
          {"comboboxs",
           {{{"id", 21},
             {"commandId", 0},
             {"disposition", disposition(10, 40, 150, 100)},
             {"tabIndex", 1},
             {"values", {"CVCP-005101", "CVCP-005102", "CVCP-005103"}}}}},
          {"checkboxs",
           {{{"id", 22},
             {"commandId", 14},
             {"disposition", disposition(10, 80, 200, 20)},
             {"text", "CVCP-005402"},
             {"tabIndex", 1}}}},
          {"syslinks",
           {{{"id", 23},
             {"commandId", 4},
             {"disposition", disposition(10, 200, 120, 20)},
             {"text", "CVCP-004101"},
             {"tabIndex", 0}}}},
          {"buttons",
           {{{"id", 24},
             {"commandId", 5},
             {"disposition", disposition(380, 310, 80, 24)},
             {"text", "CVCP-004001"},
             {"tabIndex", -1}}}},
          {"labels",
           {{{"id", 25},
             {"disposition", disposition(10, 40, 150, 20)},
             {"text", "Corvanite \xD0\x9F\xD0\xB0\xD0\xBD\xD0\xB5\xD0\xBB\xD1\x8C"},
             {"tabIndex", 0}}}}}},
    };
}

std::string writeLayoutFile(const TempFolder& folder, const std::string& bytes) {
    const std::string path = folder.file("CVHControlPanel.json");
    std::ofstream(nativePath(path), std::ios::binary) << bytes;
    return path;
}

std::string treeLayoutPath() {
    return std::string(CORVANITE_SOURCE_DIR) + "/layout/CVHControlPanel.json";
}

std::string treeSchemaPath() {
    return std::string(CORVANITE_SOURCE_DIR) + "/layout/CVHControlPanel.schema.json";
}
