#pragma once

#include <tavik/network/Network.h>

#include <vector>

namespace Tavik::Network {

/// The IPv4 addresses of this host's interfaces in the system's order. A broadcast address of 0 is told as 0.
/// @return empty, with perror, when the system does not tell them
std::vector<NetworkAdapter> listInterfaces();

} // namespace Tavik::Network
