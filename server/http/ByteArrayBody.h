// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../transport/BeastTypes.h"

#include <QByteArray>

namespace server
{
// A body that is received into, and sent from, a shared QByteArray: a stored version is never copied on its
// way out.
// NOLINTBEGIN(readability-identifier-naming): the names that Boost.Beast looks for in a body
struct ByteArrayBody
{
    using value_type = QByteArray;

    static std::uint64_t size(const value_type& body) { return static_cast<std::uint64_t>(body.size()); }

    class reader
    {
    public:
        template <bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>&, value_type& target) : body(target)
        {
        }

        void init(const boost::optional<std::uint64_t>& length, beast::error_code& ec)
        {
            if (length)
                body.reserve(static_cast<int>(*length));
            ec = {};
        }

        template <class Buffers>
        std::size_t put(const Buffers& buffers, beast::error_code& ec)
        {
            ec = {};
            std::size_t taken = 0;
            for (const auto buffer : beast::buffers_range_ref(buffers)) {
                body.append(static_cast<const char*>(buffer.data()), static_cast<int>(buffer.size()));
                taken += buffer.size();
            }
            return taken;
        }

        void finish(beast::error_code& ec) { ec = {}; }

    private:
        value_type& body;
    };

    class writer
    {
    public:
        using const_buffers_type = net::const_buffer;

        template <bool isRequest, class Fields>
        writer(const http::header<isRequest, Fields>&, const value_type& source) : body(source)
        {
        }

        void init(beast::error_code& ec) { ec = {}; }

        boost::optional<std::pair<const_buffers_type, bool>> get(beast::error_code& ec)
        {
            ec = {};
            return {{const_buffers_type(body.constData(), static_cast<std::size_t>(body.size())), false}};
        }

    private:
        const value_type& body;
    };
};
// NOLINTEND(readability-identifier-naming)
} // namespace server
