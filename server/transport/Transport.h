// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BeastTypes.h"

#include <array>
#include <functional>
#include <memory>

namespace server
{
// How the bytes of one connection travel: as they are, or encrypted. On the connection's strand only; one
// read and one write at a time.
class Transport
{
public:
    using Done = std::function<void(beast::error_code, std::size_t)>;
    using Buffers = std::array<net::const_buffer, 2>;

    Transport() = default;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;
    virtual ~Transport() = default;

    // The connection of the network below; its deadlines hold for whatever is under way here.
    virtual Stream& Lowest() = 0;

    // Agrees with the client on how to go on; once, before everything else.
    virtual void Begin(Done done) = 0;

    virtual void ReadSome(net::mutable_buffer target, Done done) = 0;
    virtual void WriteSome(const Buffers& source, Done done) = 0;

    // Tells the client that nothing more comes; then neither read nor write here.
    virtual void End(Done done) = 0;
};

std::unique_ptr<Transport> MakePlainTransport(Socket socket);
} // namespace server
