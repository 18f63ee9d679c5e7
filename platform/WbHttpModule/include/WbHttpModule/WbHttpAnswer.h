// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/AppOutline.h>
#include <WbHttpModule/WbHttpModuleExport.h>

#include <QByteArray>
#include <QHash>
#include <QString>

// Why a request brought no usable answer.
enum class WbHttpError
{
    None,
    BadRequest,     // never sent: broken address, header or token rule
    Cancelled,      // Cancel(), or the client was destroyed
    CannotConnect,  // no connection within the limit, or refused
    TlsFailed,      // the server could not prove who it is
    TimedOut,       // silent for too long, or not done by the deadline
    ConnectionLost, // broke off before the answer was complete
    TooLarge,       // body or headers beyond the caps, in either direction
    BadAnswer,      // breaks HTTP, is encoded, or does not say where it ends
    Redirected,     // the server points elsewhere; never followed
    DigestMismatch, // the body is not what the server meant to send
    BadJson,        // the body is not JSON within the limits
};

// One answer as a plain value.
struct WBHTTPMODULE_EXPORT WbHttpAnswer
{
    WbHttpError error = WbHttpError::None;
    // The reason in Chinese, fit to be shown; empty without an error.
    QString errorText;
    // Status of the server, 0 when none arrived. Meaningful with an error too (a broken 200 has status 200).
    int status = 0;
    // By lower-case name; values of a repeated header are joined by ", ".
    QHash<QByteArray, QByteArray> headers;
    // Complete and verified when error is None; else empty.
    QByteArray body;
    // SHA-256 (32 bytes) of body when it was checked against the answer's Content-Digest.
    QByteArray bodyDigest;
    // Of the body, when the request expected one.
    AppOutline outline;
    // What the request's judge said of it.
    QString verdict;
    // SHA-256 (32 bytes) of the request's body when it was to be digested and the request got that far.
    QByteArray sentDigest;

    // The server confirmed the request and the answer passed every check.
    bool IsSuccess() const { return error == WbHttpError::None && status >= 200 && status < 300; }
};
