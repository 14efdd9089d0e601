#pragma once

#include <tavik/network/Network.h>

#include <cstdint>
#include <vector>

namespace Tavik::Network {

/// The IPv4 addresses of this host's interfaces in the system's order, without their broadcast addresses.
/// @return empty, with perror, when the system does not tell them
std::vector<NetworkAdapter> listInterfaces();

/// The broadcast address that an interface has been given for one of its addresses.
/// @param fd  any socket
/// @return host byte order; 0 for none, with perror when the system does not tell
std::uint32_t queryBroadcastAddress(int fd, const NetworkAdapter& adapter);

} // namespace Tavik::Network
