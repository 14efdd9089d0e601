#include <tavik/network/AddressText.h>

namespace Tavik::Network {

std::string addressText(unsigned long address)
{
    std::string text;
    for (const unsigned int shift : {24u, 16u, 8u, 0u}) {
        text += std::to_string(address >> shift & 0xFFu);
        text += shift == 0u ? "" : ".";
    }
    return text;
}

} // namespace Tavik::Network
