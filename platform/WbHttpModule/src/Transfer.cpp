// SPDX-License-Identifier: Apache-2.0

#include "Transfer_p.h"
#include "TransportTexts_p.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{
WbHttpError ErrorOfCode(CURLcode code)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_OPERATION_TIMEDOUT: // only the connect limit is curl's
        return WbHttpError::CannotConnect;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_CIPHER:
        return WbHttpError::TlsFailed;
    case CURLE_URL_MALFORMAT:
        return WbHttpError::BadRequest;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_UNSUPPORTED_PROTOCOL: // of the answer; that of the request was checked
    case CURLE_BAD_CONTENT_ENCODING:
        return WbHttpError::BadAnswer;
    default:
        return WbHttpError::ConnectionLost;
    }
}

// A refusal's text is one short line; nothing larger is worth keeping.
constexpr qint64 errorBodyBytes = 64 * 1024;
constexpr long uploadChunkBytes = 512 * 1024;

template <typename Value>
void Set(CURL* handle, CURLoption option, Value value)
{
    curl_easy_setopt(handle, option, value);
}
} // namespace

Transfer::Transfer(quint64 transferId, const WbHttpRequest& value, Clock::time_point time)
    : id(transferId), request(value), sentAt(time), lastActivity(time)
{
}

Transfer::~Transfer() = default;

void Transfer::SetPrepared(const PreparedBody& body)
{
    prepared = body;
    // The prepared bytes are all that is needed from here on.
    request.body.clear();
    request.bodyText.clear();
}

bool Transfer::IsBodyTooLarge() const
{
    return prepared.bytes.size() > request.limits.bodyBytes;
}

Transfer::Clock::time_point Transfer::GetDeadline() const
{
    const auto& limits = request.limits;
    const qint64 sent = std::max(
        {qint64(prepared.bytes.size()), qint64(request.body.size()), qint64(request.bodyText.size())});
    const auto grace =
        std::chrono::milliseconds((sent + announcedBytes) * 1000 / limits.slowestBytesPerSecond);
    const auto absolute = sentAt + limits.total + grace;
    if (stage != Stage::Running)
        return absolute;
    return std::min(absolute, lastActivity + limits.inactivity);
}

CURL* Transfer::Start()
{
    handle.reset(curl_easy_init());
    if (!handle)
        return nullptr;
    SetSafetyOptions();
    SetTarget();
    SetBodyOptions();
    SetHeaders();
    stage = Stage::Running;
    Touch();
    return handle.get();
}

void Transfer::SetSafetyOptions()
{
    CURL* curl = handle.get();
    Set(curl, CURLOPT_PRIVATE, this);
    Set(curl, CURLOPT_NOSIGNAL, 1L);
    // Without it the end of the thread waits for a name look-up that hangs.
    Set(curl, CURLOPT_QUICK_EXIT, 1L);
    Set(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    Set(curl, CURLOPT_FOLLOWLOCATION, 0L);
    // Proxies of the environment would see the token.
    Set(curl, CURLOPT_PROXY, "");
    Set(curl, CURLOPT_NETRC, long(CURL_NETRC_IGNORED));
    Set(curl, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    Set(curl, CURLOPT_HTTP09_ALLOWED, 0L);
    Set(curl, CURLOPT_HTTP_CONTENT_DECODING, 0L);
    Set(curl, CURLOPT_TCP_NODELAY, 1L);
    Set(curl, CURLOPT_CONNECTTIMEOUT_MS, long(request.limits.connect.count()));
    Set(curl, CURLOPT_SSL_VERIFYPEER, 1L);
    Set(curl, CURLOPT_SSL_VERIFYHOST, 2L);
    Set(curl, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    // A company's own authority often publishes no list of revoked certificates; Schannel would refuse it.
    Set(curl, CURLOPT_SSL_OPTIONS, long(CURLSSLOPT_NATIVE_CA | CURLSSLOPT_REVOKE_BEST_EFFORT));
    if (!request.caFile.isEmpty())
        Set(curl, CURLOPT_CAINFO, request.caFile.toUtf8().constData());
}

void Transfer::SetTarget()
{
    CURL* curl = handle.get();
    Set(curl, CURLOPT_URL, request.url.toEncoded(QUrl::RemoveFragment).constData());
    // The address is used as it was built: no removal of dot segments that the server should see.
    Set(curl, CURLOPT_PATH_AS_IS, 1L);
    Set(curl, CURLOPT_PREREQFUNCTION, &Transfer::OnSend);
    Set(curl, CURLOPT_PREREQDATA, this);
    Set(curl, CURLOPT_HEADERFUNCTION, &Transfer::OnHeader);
    Set(curl, CURLOPT_HEADERDATA, this);
    Set(curl, CURLOPT_WRITEFUNCTION, &Transfer::OnBody);
    Set(curl, CURLOPT_WRITEDATA, this);
}

void Transfer::SetBodyOptions()
{
    CURL* curl = handle.get();
    const bool hasBody = !prepared.bytes.isEmpty() || request.method == "POST" || request.method == "PUT" ||
                         request.method == "PATCH";
    if (hasBody) {
        Set(curl, CURLOPT_POST, 1L);
        Set(curl, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(prepared.bytes.size()));
        Set(curl, CURLOPT_READFUNCTION, &Transfer::OnUpload);
        Set(curl, CURLOPT_READDATA, this);
        Set(curl, CURLOPT_UPLOAD_BUFFERSIZE, uploadChunkBytes);
    }
    Set(curl, CURLOPT_CUSTOMREQUEST, request.method.constData());
}

void Transfer::SetHeaders()
{
    AddHeader("Accept-Encoding: identity");
    // Waiting for "100 Continue" would delay every large save by up to a second.
    AddHeader("Expect:");
    if (std::none_of(request.headers.cbegin(), request.headers.cend(),
                     [](const auto& header) { return header.first.toLower() == "content-type"; }))
        AddHeader("Content-Type:");
    for (const auto& header : qAsConst(request.headers)) {
        // curl drops a header without a value unless its name ends in a semicolon.
        AddHeader(header.second.isEmpty() ? header.first + ";" : header.first + ": " + header.second);
    }
    if (!request.bearerToken.isEmpty())
        AddHeader("Authorization: Bearer " + request.bearerToken);
    if (!prepared.digest.isEmpty())
        AddHeader("Content-Digest: " + DigestHeaderValue(prepared.digest));
    Set(handle.get(), CURLOPT_HTTPHEADER, headerList.get());
}

void Transfer::AddHeader(const QByteArray& line)
{
    if (curl_slist* extended = curl_slist_append(headerList.get(), line.constData())) {
        // The head stays the same but for the first line.
        if (extended != headerList.get())
            headerList.reset(extended);
    }
}

size_t Transfer::OnHeader(char* data, size_t size, size_t count, void* self)
{
    auto* transfer = static_cast<Transfer*>(self);
    const size_t bytes = size * count;
    return transfer->TakeHeaderLine(QByteArray(data, int(bytes))) ? bytes : 0;
}

size_t Transfer::OnBody(char* data, size_t size, size_t count, void* self)
{
    auto* transfer = static_cast<Transfer*>(self);
    const size_t bytes = size * count;
    return transfer->TakeBody(data, bytes) ? bytes : CURL_WRITEFUNC_ERROR;
}

bool Transfer::IsSending() const
{
    if (stage != Stage::Running || prepared.bytes.isEmpty())
        return false;
    curl_off_t sent = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return sent < prepared.bytes.size();
}

size_t Transfer::OnUpload(char* data, size_t size, size_t count, void* self)
{
    auto* transfer = static_cast<Transfer*>(self);
    const qint64 left = transfer->prepared.bytes.size() - transfer->uploaded;
    const qint64 bytes = std::min(left, qint64(size * count));
    std::memcpy(data, transfer->prepared.bytes.constData() + transfer->uploaded, size_t(bytes));
    transfer->uploaded += bytes;
    transfer->Touch();
    return size_t(bytes);
}

// When a connection that was used before breaks off without an answer, curl sends the request once more by
// itself. The server may have done it already, and another may listen there by now: whoever sent it decides.
int Transfer::OnSend(void* self, char* remoteAddress, char* ownAddress, int remotePort, int ownPort)
{
    Q_UNUSED(remoteAddress)
    Q_UNUSED(ownAddress)
    Q_UNUSED(remotePort)
    Q_UNUSED(ownPort)
    auto* transfer = static_cast<Transfer*>(self);
    return std::exchange(transfer->hasLeft, true) ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

bool Transfer::TakeHeaderLine(const QByteArray& line)
{
    Touch();
    headerBytes += line.size();
    if (headerBytes > request.limits.headerBytes)
        return Refuse(WbHttpError::TooLarge);
    if (line.startsWith("HTTP/")) {
        // Interim answers (100 Continue) come before the final one.
        answer.headers.clear();
        isFramed = false;
        announcedBytes = 0;
        return true;
    }
    const int colon = line.indexOf(':');
    if (colon <= 0)
        return true;
    return TakeHeader(line.left(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
}

bool Transfer::TakeHeader(const QByteArray& name, const QByteArray& value)
{
    auto& known = answer.headers[name];
    known = known.isEmpty() ? value : known + ", " + value;
    if (name == "content-length") {
        bool ok = false;
        const qint64 length = value.toLongLong(&ok);
        if (!ok || length < 0)
            return Refuse(WbHttpError::BadAnswer);
        if (length > request.limits.bodyBytes)
            return Refuse(WbHttpError::TooLarge);
        announcedBytes = length;
        isFramed = true;
    } else if (name == "transfer-encoding") {
        // Anything but plain chunks would be decoded behind our back.
        if (value.toLower() != "chunked")
            return Refuse(WbHttpError::BadAnswer);
        isFramed = true;
    } else if (name == "content-encoding" && value.toLower() != "identity") {
        return Refuse(WbHttpError::BadAnswer);
    }
    return true;
}

bool Transfer::TakeBody(const char* data, size_t bytes)
{
    Touch();
    long status = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
    const qint64 cap =
        status >= 300 ? std::min(errorBodyBytes, request.limits.bodyBytes) : request.limits.bodyBytes;
    if (qint64(bytes) > cap - answer.body.size())
        return Refuse(WbHttpError::TooLarge);
    answer.body.append(data, int(bytes));
    return true;
}

bool Transfer::Refuse(WbHttpError error)
{
    refusal = error;
    return false;
}

WbHttpAnswer Transfer::Finish(CURLcode code)
{
    long status = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
    answer.status = int(status);
    answer.sentDigest = prepared.digest;
    answer.error = code == CURLE_OK ? FramingError() : ErrorOf(code);
    answer.errorText = TransportText(answer.error);
    if (answer.error != WbHttpError::None)
        answer.body.clear();
    handle.reset();
    return answer;
}

WbHttpError Transfer::FramingError() const
{
    if (answer.status >= 300 && answer.status < 400)
        return WbHttpError::Redirected;
    // A body that ends with the connection may be cut without anybody noticing.
    const bool hasNoBody = answer.status == 204;
    if (!isFramed && !hasNoBody)
        return WbHttpError::BadAnswer;
    return WbHttpError::None;
}

WbHttpError Transfer::ErrorOf(CURLcode code) const
{
    if (refusal != WbHttpError::None)
        return refusal;
    const WbHttpError error = ErrorOfCode(code);
    const bool isUnsent = error == WbHttpError::CannotConnect || error == WbHttpError::TlsFailed;
    return isUnsent && hasLeft ? WbHttpError::ConnectionLost : error;
}
