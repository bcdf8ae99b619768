#pragma once

#include <cstdint>

// The port holder: another program that holds a port, for the tests of a server that can't
// listen there.
namespace portholder {

// What each system provides.
namespace native {

// Listens on every IPv4 interface at port, or with ipv6Only on every IPv6 interface only;
// false when the port can't be had.
bool holdPort(unsigned port, bool ipv6Only);
void sleepSeconds(unsigned seconds);

} // namespace native

} // namespace portholder
