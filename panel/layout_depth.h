#pragma once

#include <cstddef>
#include <string_view>

// The deepest nesting of the layout: window, widgets, a widget array, an element, its disposition,
// a pair, with room to spare.
inline constexpr std::size_t maxLayoutDepth = 64;

// How deeply the arrays and objects of the first JSON value in `text` nest, counted on the raw
// text so that a hostile file is refused before a document is built from it; brackets inside
// strings don't count. Counting stops once that value is closed or `limit` is passed, so a result
// above `limit` means "deeper than that". Text that isn't JSON gives some depth; the parser refuses
// it anyway.
std::size_t layoutDepth(std::string_view text, std::size_t limit = maxLayoutDepth);
