// SPDX-License-Identifier: Apache-2.0

#include "AnswerWriter.h"

#include "ResponseHead.h"

namespace server
{
AnswerWriter::AnswerWriter(Transport& theTransport, const HttpLimits& limits)
    : transport(theTransport), pace(theTransport.Lowest(), limits)
{
}

void AnswerWriter::Write(Response response, bool keepAlive, bool headAlone, Done done)
{
    head = ResponseHead(response, keepAlive);
    body = headAlone ? QByteArray() : std::move(response.body);
    sent = 0;
    pace.Start(body.size());
    WriteRest(std::move(done));
}

void AnswerWriter::WriteRest(Done done)
{
    const auto bodySent = sent > head.size() ? sent - head.size() : 0;
    const Transport::Buffers rest{net::buffer(head) + sent,
                                  net::const_buffer(body.constData(), static_cast<std::size_t>(body.size())) +
                                      bodySent};
    pace.Next();
    transport.WriteSome(rest,
                        [this, done = std::move(done)](beast::error_code ec, std::size_t count) mutable {
                            sent += count;
                            if (!ec && sent < head.size() + static_cast<std::size_t>(body.size()))
                                return WriteRest(std::move(done));
                            body = {};
                            done(ec);
                        });
}
} // namespace server
