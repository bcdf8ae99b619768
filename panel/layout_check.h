#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

// What a product team needs to know about an edited layout file before it ships: every place
// where the program would refuse the file, fail while building the window, or build a window
// that doesn't show every widget.
struct LayoutProblem {
    // JSON pointer of the value at fault, "" for the whole document.
    std::string path;
    std::string message;
};

// Every problem of the layout file at the UTF-8 path, in file order. The file is read with the
// program's own reader first: a file it refuses gives that one problem alone.
std::vector<LayoutProblem> checkLayoutFile(const std::string& path);

// Every problem of a parsed layout document, the file's own reading aside.
std::vector<LayoutProblem> checkLayoutDocument(const nlohmann::json& document);
