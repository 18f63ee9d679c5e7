// SPDX-License-Identifier: Apache-2.0

#include "Tls.h"

#include <QFile>

#include <boost/asio/ssl.hpp>
#include <mutex>
#include <stdexcept>

namespace server
{
namespace
{
namespace ssl = net::ssl;

using Context = std::shared_ptr<ssl::context>;

class TlsTransport : public Transport
{
public:
    TlsTransport(Socket socket, Context theContext)
        : context(std::move(theContext)), stream(std::move(socket), *context)
    {
    }

    Stream& Lowest() override { return stream.next_layer(); }

    void Begin(Done done) override
    {
        stream.async_handshake(ssl::stream_base::server,
                               [done = std::move(done)](beast::error_code ec) { done(ec, 0); });
    }

    void ReadSome(net::mutable_buffer target, Done done) override
    {
        stream.async_read_some(target, std::move(done));
    }

    // Only one buffer goes into a record, so a head is put together with the start of its body.
    void WriteSome(const Buffers& source, Done done) override
    {
        if (source[0].size() == 0 || source[1].size() == 0)
            return stream.async_write_some(source, std::move(done));
        joined.resize(std::min(largestRecord, net::buffer_size(source)));
        net::buffer_copy(net::buffer(joined), source);
        stream.async_write_some(net::buffer(joined), std::move(done));
    }

    void End(Done done) override
    {
        joined = {};
        stream.async_shutdown([done = std::move(done)](beast::error_code ec) { done(ec, 0); });
    }

private:
    static constexpr std::size_t largestRecord = 16 * 1024;

    const Context context;
    ssl::stream<Stream> stream;
    std::string joined;
};

QByteArray Read(const QString& fileName)
{
    constexpr qint64 longest = 1024 * 1024;
    QFile file(fileName);
    QByteArray text = file.open(QIODevice::ReadOnly) ? file.read(longest) : QByteArray();
    if (text.isEmpty())
        throw std::runtime_error("cannot read " + fileName.toStdString());
    return text;
}

net::const_buffer BufferOf(const QByteArray& text)
{
    return net::buffer(text.constData(), static_cast<std::size_t>(text.size()));
}

// TLS 1.2 with forward secrecy, or 1.3; nothing that a client could make the server work hard with.
void Harden(ssl::context& context)
{
    SSL_CTX* native = context.native_handle();
    SSL_CTX_set_min_proto_version(native, TLS1_2_VERSION);
    SSL_CTX_set_options(native,
                        SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    SSL_CTX_set_cipher_list(native, "ECDHE+AESGCM:ECDHE+CHACHA20");
    SSL_CTX_set_session_cache_mode(native, SSL_SESS_CACHE_OFF);
    SSL_CTX_set_mode(native, SSL_MODE_RELEASE_BUFFERS);
    // A key with a password must not make a service ask at a terminal.
    context.set_password_callback([](std::size_t, ssl::context::password_purpose) { return std::string(); });
}

Context Load(const TlsFiles& files)
{
    const QByteArray certificate = Read(files.certificate);
    const QByteArray key = Read(files.key);
    auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
    Harden(*context);
    beast::error_code ec;
    context->use_certificate_chain(BufferOf(certificate), ec);
    if (ec)
        throw std::runtime_error("no certificate in " + files.certificate.toStdString() + ": " +
                                 ec.message());
    context->use_private_key(BufferOf(key), ssl::context::pem, ec);
    if (ec || SSL_CTX_check_private_key(context->native_handle()) != 1)
        throw std::runtime_error("no key in " + files.key.toStdString() + " that fits the certificate" +
                                 (ec ? ": " + ec.message() : std::string()));
    return context;
}

class OpenSslTls : public Tls
{
public:
    explicit OpenSslTls(TlsFiles theFiles) : files(std::move(theFiles)), current(Load(files)) {}

    std::unique_ptr<Transport> Wrap(Socket socket) override
    {
        return std::make_unique<TlsTransport>(std::move(socket), Current());
    }

    void Reload() override
    {
        Context fresh = Load(files);
        const std::lock_guard lock(mutex);
        current.swap(fresh);
    }

private:
    Context Current()
    {
        const std::lock_guard lock(mutex);
        return current;
    }

    const TlsFiles files;
    std::mutex mutex;
    Context current;
};
} // namespace

std::unique_ptr<Tls> OpenTls(const TlsFiles& files)
{
    return std::make_unique<OpenSslTls>(files);
}

QString TlsName()
{
    return QString::fromLatin1(OpenSSL_version(OPENSSL_VERSION)).section(QLatin1Char(' '), 0, 1);
}
} // namespace server
