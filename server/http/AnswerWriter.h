// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../transport/Transport.h"
#include "Pace.h"
#include "Request.h"

#include <string>

namespace server
{
// Writes one answer after another to a client, as fast as the client takes them. On the connection's strand.
class AnswerWriter
{
public:
    // Whether the answer went out; whoever is in it keeps this writer alive.
    using Done = std::function<void(beast::error_code)>;

    AnswerWriter(Transport& transport, const HttpLimits& limits);

    // Without its body when the client asked for the head alone.
    void Write(Response response, bool keepAlive, bool headAlone, Done done);

private:
    void WriteRest(Done done);

    Transport& transport;
    Pace pace;
    std::string head;
    QByteArray body;
    std::size_t sent = 0; // of both
};
} // namespace server
