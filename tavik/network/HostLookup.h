#pragma once

#include <string>

namespace Tavik::Network {

/// The first IPv4 address that the host database has for a name.
/// @return host byte order, 0 when there is none
unsigned long lookUpHost(const std::string& name);

} // namespace Tavik::Network
