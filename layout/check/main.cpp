// cvh-layout-check: tells a product team, before a layout file ships, every place where the
// control panel would refuse it or build a window that doesn't show every widget.

#include <iostream>
#include <string>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "panel/layout_check.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: cvh-layout-check <layout file>\n";
        return 2;
    }
    panelMessages.setLanguage(Language::English);
    const std::string file = argv[1];
    const std::vector<LayoutProblem> problems = checkLayoutFile(file);
    for (const LayoutProblem& problem : problems) {
        const std::string path = problem.path.empty() ? "(document)" : problem.path;
        std::cout << file << ": " << path << ": " << cp1251ToUtf8(problem.message) << '\n';
    }
    if (problems.empty()) {
        std::cout << file << ": the control panel starts and shows every widget\n";
        return 0;
    }
    std::cout << file << ": " << problems.size() << " problem(s)\n";
    return 1;
}
