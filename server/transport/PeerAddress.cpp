// SPDX-License-Identifier: Apache-2.0

#include "PeerAddress.h"

namespace server
{
namespace
{
template <typename Bytes>
QByteArray First(const Bytes& bytes, int count)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), count);
}
} // namespace

PeerAddress::PeerAddress(const net::ip::address& given)
{
    const bool mapped = given.is_v6() && given.to_v6().is_v4_mapped();
    const net::ip::address address =
        mapped ? net::ip::address(net::ip::make_address_v4(net::ip::v4_mapped, given.to_v6())) : given;
    isLoopback = address.is_loopback();
    key = address.is_v4() ? First(address.to_v4().to_bytes(), 4) : First(address.to_v6().to_bytes(), 8);
}
} // namespace server
