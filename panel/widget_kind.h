#pragma once

#include <cstdint>

// The six kinds of control that the layout file can describe.
enum class WidgetKind : std::int32_t {
    Label = 0,
    Button = 1,
    Syslink = 2,
    Checkbox = 3,
    Combobox = 4,
    Tabpanel = 5,
};
