#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "tests/support/foundation/temp_folder.h"

// A small layout with one widget of each kind and the two menu items of Run and Stop, whose texts
// are catalogue ids or literal words only, so that reading it asks nothing of the host.
nlohmann::json smallLayoutDocument();

// Writes the bytes as the layout file into the folder and returns its UTF-8 path.
std::string writeLayoutFile(const TempFolder& folder, const std::string& bytes);

// The layout file of the source tree, layout/CVHControlPanel.json.
std::string treeLayoutPath();

// The JSON Schema of the layout file in the source tree, layout/CVHControlPanel.schema.json.
std::string treeSchemaPath();
