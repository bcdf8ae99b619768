#pragma once

#include <string>

// The target of the address link without its port: "https://", the service's host name, ":".
// The update cycle adds the port and shows it as the link's tooltip.
extern const std::wstring tooltipBase;
