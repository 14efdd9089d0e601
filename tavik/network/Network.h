#pragma once

#include <tavik/Export.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Tavik::Network {

/// One IPv4 address of this host. Addresses are in host byte order, first part in the highest byte.
struct NetworkAdapter
{
    std::string name;            ///< of the interface, such as "eth0"
    std::uint32_t address = 0;   ///< of this host
    std::uint32_t broadcast = 0; ///< 0x7FFFFFFF where the interface has none
    std::uint32_t netmask = 0;   ///< of the interface
};

/// Addresses of this host and of others, and the download of a file.
///
/// An address is a number in host byte order, first part in the highest byte: 0xC0A80001 is 192.168.0.1. Objects hold
/// nothing. Any thread may call, except that one thread at a time downloads.
class TAVIK_API Network
{
public:
    /// Every IPv4 address of this host, in the system's order, the loopback among them.
    /// @return empty, with the reason on standard error ("Opening send socket" or "ioctl"), when the system does not
    ///         tell
    std::vector<NetworkAdapter> getNetworkAdapters();

    /// "192.168.0.1" of 0xC0A80001; bits above the 32nd do not count.
    std::string getAddressString(unsigned long address);

    /// The IPv4 address of a name or of a text such as "192.168.0.1"; of several addresses the last that is not 0.
    /// Asks name servers, and may wait for them.
    /// @return 0 when there is none, and standard error has the reason, "getaddrinfo: Name or service not known"
    unsigned long getAddressFromName(const std::string& name);

    /// Downloads a file through HTTP/1.1 from port 80 (RFC 9112), without encryption. Waits for the connection for as
    /// long as the system does, for the answer 1 s, and then until 50 ms pass in silence or 1 MiB has come, where the
    /// answer is cut.
    ///
    /// Neither status nor header of the answer are looked at: an error page is a file as any other. The file holds what
    /// stands behind the last blank line (CR LF CR LF) of the answer, so only content without such a line arrives
    /// whole. Host addresses are asked for once in the life of the process.
    ///
    /// @param url  "http://host/path"; what stands before "//" is ignored, and a port cannot be given. Without a '/'
    ///             behind the host the whole text is the path. Control characters fail, since they would end the
    ///             request
    /// @param fileName  replaced as a whole once the answer is there; its folder is created
    /// @return whether the server answered within the first second, be a file written or not. When it cannot be
    ///         written, standard output says "could not open <fileName>", standard error why ("fopen"), and the old one
    ///         stays
    bool getFileHttp(const std::string& url, const std::string& fileName);

private:
    static std::map<std::string, unsigned long> mHosts; // by name
};

} // namespace Tavik::Network
