#include "diagnostics/report_words.h"

#include "foundation/message_catalogue.h"
#include "foundation/text.h"

std::string reportWords(const char* id) {
    return cp1251ToUtf8(panelMessages.text(id));
}

std::string formatReportWords(const char* id, const char* a1, const char* a2, const char* a3,
                              const char* a4, const char* a5) {
    // The pattern is converted first, so that the arguments, already UTF-8, stay as they are.
    return substitutePlaceholders(reportWords(id), a1, a2, a3, a4, a5);
}
