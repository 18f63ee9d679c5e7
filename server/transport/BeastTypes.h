// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

// Names of the HTTP library, as the files of this folder use them.
namespace server
{
namespace beast = boost::beast;
namespace http = beast::http;
namespace net = boost::asio;
using tcp = net::ip::tcp;
using Strand = net::strand<net::io_context::executor_type>;
using Socket = net::basic_stream_socket<tcp, Strand>;
using Stream = beast::basic_stream<tcp, Strand>;
} // namespace server
