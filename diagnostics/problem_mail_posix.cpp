#include "diagnostics/problem_mail.h"

#include "foundation/shell_open.h"
#include "foundation/text.h"

// Without the narrow shell call the link goes the way of every address the panel opens.
void openMailLink(const std::string& link) {
    shellOpenUrl(fromCp1251(link));
}
