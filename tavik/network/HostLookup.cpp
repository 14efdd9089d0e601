#include <tavik/network/HostLookup.h>

#include <netdb.h>
#include <netinet/in.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Tavik::Network {

unsigned long lookUpHost(const std::string& name)
{
    constexpr std::size_t LargestAnswerBytes = 1 << 20;
    for (std::vector<char> buffer(1024); buffer.size() <= LargestAnswerBytes; buffer.resize(2 * buffer.size())) {
        hostent entry{};
        hostent* found = nullptr;
        int error = 0;
        const int result = gethostbyname_r(name.c_str(), &entry, buffer.data(), buffer.size(), &found, &error);
        if (result == ERANGE) {
            continue; // the answer did not fit
        }
        if (result != 0 || found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr) {
            return 0;
        }
        std::uint32_t address = 0;
        std::memcpy(&address, found->h_addr_list[0], sizeof address);
        return ntohl(address);
    }
    return 0;
}

} // namespace Tavik::Network
