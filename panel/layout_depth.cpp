#include "panel/layout_depth.h"

std::size_t layoutDepth(std::string_view text, std::size_t limit) {
    std::size_t depth = 0;
    std::size_t deepest = 0;
    bool inString = false;
    bool escaped = false;
    for (const char c : text) {
        if (inString) {
            if (escaped) {
                escaped = false;
            } else if (c == '\\') {
                escaped = true;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepest && (deepest = depth) > limit) {
                break;
            }
        } else if ((c == ']' || c == '}') && depth > 0 && --depth == 0) {
            break;
        }
    }
    return deepest;
}
