#pragma once

#include <string>

namespace Tavik::Network {

/// "192.168.0.1" of 0xC0A80001: the four low bytes, most significant first.
std::string addressText(unsigned long address);

} // namespace Tavik::Network
