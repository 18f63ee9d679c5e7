// SPDX-License-Identifier: Apache-2.0

#include "Framing.h"

#include "Percent.h"

namespace server
{
namespace
{
using Message = http::request<ByteArrayBody>;

QByteArray ToBytes(beast::string_view text)
{
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

std::size_t CountOf(const Message& message, http::field field)
{
    const auto range = message.equal_range(field);
    return static_cast<std::size_t>(std::distance(range.first, range.second));
}

// A coding that we skip and another reader undoes would let a second request hide in the body.
bool IsCodingClear(const Message& message)
{
    const std::size_t count = CountOf(message, http::field::transfer_encoding);
    if (count == 0)
        return true;
    return count == 1 && message.version() == 11 &&
           beast::iequals(message[http::field::transfer_encoding], "chunked");
}

bool IsHostClear(const Message& message)
{
    const std::size_t count = CountOf(message, http::field::host);
    return count == 1 || (count == 0 && message.version() == 10);
}

bool IsTargetClear(beast::string_view target)
{
    if (target.find('%') == beast::string_view::npos)
        return true;
    return DecodePercent(ToBytes(target)).has_value();
}

bool NamesThisMachine(beast::string_view host)
{
    const auto end = host.find_last_of("]:");
    if (end != beast::string_view::npos && host[end] == ':')
        host.remove_suffix(host.size() - end);
    if (beast::iequals(host, "localhost") || host == "[::1]")
        return true;
    beast::error_code ec;
    const auto address = net::ip::make_address_v4(std::string(host), ec);
    return !ec && address.is_loopback();
}
} // namespace

int FaultOf(const Message& message, const HttpLimits& limits)
{
    if (message.target().size() > static_cast<std::size_t>(limits.urlBytes))
        return 414;
    if (message.version() != 11 && message.version() != 10)
        return 400;
    if (!IsCodingClear(message) || !IsHostClear(message) || !IsTargetClear(message.target()))
        return 400;
    if (limits.loopbackHostsOnly && !NamesThisMachine(message[http::field::host]))
        return 421;
    return 0;
}
RequestHead HeadOf(const http::request<ByteArrayBody>& message)
{
    RequestHead head;
    head.method = ToBytes(message.method_string());
    const QByteArray target = ToBytes(message.target());
    const int mark = target.indexOf('?');
    head.path = mark < 0 ? target : target.left(mark);
    head.query = mark < 0 ? QByteArray() : target.mid(mark + 1);
    for (const auto& field : message)
        head.headers.emplace_back(ToBytes(field.name_string()).toLower(), ToBytes(field.value()));
    return head;
}
} // namespace server
