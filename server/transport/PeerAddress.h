// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BeastTypes.h"

#include <QByteArray>

namespace server
{
// An address as the limits count it. An IPv6 client is given a whole network of 64 bits, so that is one
// address here; an IPv4 address inside IPv6 is what it stands for.
struct PeerAddress
{
    explicit PeerAddress(const net::ip::address& address);

    QByteArray key;
    bool isLoopback = false;
};
} // namespace server
