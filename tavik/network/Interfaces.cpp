#include <tavik/network/Interfaces.h>

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <cstdio>
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

/// @return host byte order; 0 for none
std::uint32_t broadcastAddress(const ifaddrs& entry)
{
    // Without the flag the field holds the other end of a point-to-point link, and where the interface has been given
    // no broadcast address, its own.
    const std::uint32_t address = (entry.ifa_flags & IFF_BROADCAST) != 0 ? ipv4Address(entry.ifa_broadaddr) : 0;
    return address == ipv4Address(entry.ifa_addr) ? 0 : address;
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
        adapter.broadcast = broadcastAddress(*entry);
        adapter.netmask = ipv4Address(entry->ifa_netmask);
        adapters.push_back(std::move(adapter));
    }
    return adapters;
}

} // namespace Tavik::Network
