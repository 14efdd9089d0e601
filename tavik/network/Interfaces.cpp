#include <tavik/network/Interfaces.h>

#include <tavik/network/SocketOptions.h>

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace Tavik::Network {

namespace {

struct FreeAddresses
{
    void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

/// @return host byte order; 0 for none
std::uint32_t ipv4Address(const sockaddr* address)
{
    if (address == nullptr || address->sa_family != AF_INET) {
        return 0;
    }
    return ntohl(reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr);
}

} // namespace

std::vector<NetworkAdapter> listInterfaces()
{
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) < 0) {
        std::perror("ioctl"); // whatever the call, one text for the failing list
        return {};
    }
    const std::unique_ptr<ifaddrs, FreeAddresses> owner(list);
    std::vector<NetworkAdapter> adapters;
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET) {
            continue;
        }
        NetworkAdapter adapter;
        adapter.name = entry->ifa_name;
        adapter.address = ipv4Address(entry->ifa_addr);
        adapter.netmask = ipv4Address(entry->ifa_netmask);
        adapters.push_back(std::move(adapter));
    }
    return adapters;
}

/// Asked for one by one: the list of the system has a single field for it and for the other end of a link.
std::uint32_t queryBroadcastAddress(int fd, const NetworkAdapter& adapter)
{
    ifreq request{};
    adapter.name.copy(request.ifr_name, IFNAMSIZ - 1);
    // An interface may have several addresses.
    const sockaddr_in address = socketAddress(adapter.address, 0);
    std::memcpy(&request.ifr_addr, &address, sizeof address);
    if (ioctl(fd, SIOCGIFBRDADDR, &request) < 0) {
        std::perror("ioctl");
        return 0;
    }
    return ipv4Address(&request.ifr_broadaddr);
}

} // namespace Tavik::Network
