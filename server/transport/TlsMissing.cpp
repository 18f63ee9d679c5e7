// SPDX-License-Identifier: Apache-2.0

#include "Tls.h"

#include <stdexcept>

namespace server
{
std::unique_ptr<Tls> OpenTls(const TlsFiles&)
{
    throw std::runtime_error(
        "this server was built without TLS (OpenSSL was not found): leave --tls-certificate "
        "and --tls-key away and put a TLS terminator in front of it");
}

QString TlsName()
{
    return {};
}
} // namespace server
