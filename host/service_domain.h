#pragma once

#include <string>

// The public host name under which web pages reach the signing server on this computer. It is a
// build-time setting of the product (the CMake cache variable ServiceDomain).
extern const std::string ServiceDomain;
