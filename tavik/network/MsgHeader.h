#pragma once

#include <cstdint>

namespace Tavik::Network {

/// What stands before the payload of each message between SocketTcp objects: 24 bytes, on the wire as in memory, every
/// number in the byte order of the machine.
struct MsgHeader
{
    /// The only value of `version` that SocketTcp::readPackage() accepts. The sender fills it in.
    static constexpr std::uint16_t Version = 0x1203;

    std::uint32_t channel = 0;       ///< the application's, carried through
    std::uint16_t version = Version; ///< of this layout
    std::uint16_t reserved = 0;      ///< sent as it is, ignored on receipt
    std::uint32_t msgType = 0;       ///< the application's; the result of readPackage(), where 0xFFFFFFFD and above
                                     ///< cannot be told from its failures
    std::uint32_t dataLength = 0;    ///< bytes of payload that follow
    unsigned char userData[8] = {};  ///< the application's, carried through
};

static_assert(sizeof(MsgHeader) == 24, "the layout on the wire");

} // namespace Tavik::Network
