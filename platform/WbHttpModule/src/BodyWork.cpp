// SPDX-License-Identifier: Apache-2.0

#include "BodyWork_p.h"
#include "TransportTexts_p.h"

#include <WbFoundation/JsonGuard.h>

#include <QCryptographicHash>

namespace
{
void Reject(WbHttpAnswer* answer, WbHttpError error)
{
    answer->error = error;
    answer->errorText = TransportText(error);
    answer->body.clear();
}

QString GuardProblem(const QByteArray& json)
{
    QString reason;
    if (JsonGuard::Check(json, &reason))
        return {};
    return QStringLiteral("内容超出可以再次打开的范围，没有发送（%1）").arg(reason);
}
} // namespace

PreparedBody PrepareBody(const WbHttpRequest& request)
{
    PreparedBody prepared;
    prepared.bytes = request.bodyText.isNull() ? request.body : request.bodyText.toUtf8();
    // A body that is too large in any case is refused as such.
    if (request.guardBody && prepared.bytes.size() <= request.limits.bodyBytes)
        prepared.problem = GuardProblem(prepared.bytes);
    if (request.digestBody)
        prepared.digest = QCryptographicHash::hash(prepared.bytes, QCryptographicHash::Sha256);
    return prepared;
}

QByteArray DigestHeaderValue(const QByteArray& sha256)
{
    return "sha-256=:" + sha256.toBase64() + ":";
}

void VerifyAnswer(const WbHttpExpectation& expectation, WbHttpAnswer* answer)
{
    const bool isSuccess = answer->status >= 200 && answer->status < 300;
    if (isSuccess && expectation.contentDigest) {
        const auto digest = QCryptographicHash::hash(answer->body, QCryptographicHash::Sha256);
        if (answer->headers.value("content-digest") != DigestHeaderValue(digest))
            return Reject(answer, WbHttpError::DigestMismatch);
        answer->bodyDigest = digest;
    }
    if (isSuccess && expectation.outline) {
        answer->outline = AppOutline::Read(answer->body);
        if (answer->outline.kind == AppOutline::Kind::NotJson)
            Reject(answer, WbHttpError::BadJson);
        else if (answer->outline.IsApp() && expectation.judge)
            answer->verdict = expectation.judge(answer->body);
        return;
    }
    if (!expectation.json || JsonGuard::Check(answer->body))
        return;
    if (isSuccess)
        return Reject(answer, WbHttpError::BadJson);
    // A refusal stays one whatever its body is; only the words are lost.
    answer->body.clear();
}
