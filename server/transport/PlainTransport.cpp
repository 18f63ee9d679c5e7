// SPDX-License-Identifier: Apache-2.0

#include "Transport.h"

namespace server
{
namespace
{
class PlainTransport : public Transport
{
public:
    explicit PlainTransport(Socket socket) : stream(std::move(socket)) {}

    Stream& Lowest() override { return stream; }

    void Begin(Done done) override { done({}, 0); }

    void ReadSome(net::mutable_buffer target, Done done) override
    {
        stream.async_read_some(target, std::move(done));
    }

    void WriteSome(const Buffers& source, Done done) override
    {
        stream.async_write_some(source, std::move(done));
    }

    void End(Done done) override { done({}, 0); }

private:
    Stream stream;
};
} // namespace

std::unique_ptr<Transport> MakePlainTransport(Socket socket)
{
    return std::make_unique<PlainTransport>(std::move(socket));
}
} // namespace server
