// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/ContentLimits.h>
#include <WbHttpModule/WbHttpModuleExport.h>

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QUrl>
#include <QVector>

#include <chrono>
#include <functional>

// Deadlines and caps of one request. The defaults are what users get; tests shorten them.
struct WBHTTPMODULE_EXPORT WbHttpLimits
{
    // Until the connection stands, name look-up and TLS included.
    std::chrono::milliseconds connect{10000};
    // Longest silence between two signs of life (bytes in either direction).
    std::chrono::milliseconds inactivity{30000};
    // The whole request, counted from Send(), is answered after total + bytes / slowestBytesPerSecond at the
    // latest, where bytes are those of the request's body and those the server announced for its answer.
    std::chrono::milliseconds total{60000};
    qint64 slowestBytesPerSecond = 256 * 1024;
    // Largest body, in either direction.
    qint64 bodyBytes = ContentLimits::totalBytes;
    // All header lines of an answer together, those of interim answers included.
    qint64 headerBytes = 16 * 1024;
};

// What a successful answer (status 200–299) must prove before it may count as one.
struct WBHTTPMODULE_EXPORT WbHttpExpectation
{
    // The body carries a Content-Digest with its SHA-256.
    bool contentDigest = false;
    // The body is JSON within the limits for foreign JSON (JsonGuard).
    bool json = false;
    // JSON as above, and what it is as an app is told in the answer's outline. No app is no error here.
    bool outline = false;
    // Asked about the body of an app, away from the GUI thread; what it says is told in the answer's verdict.
    // Needs outline.
    std::function<QString(const QByteArray& body)> judge = {};
};

// One HTTP request as a plain value.
struct WBHTTPMODULE_EXPORT WbHttpRequest
{
    // "GET", "POST", "PUT", "PATCH", "DELETE".
    QByteArray method = QByteArrayLiteral("GET");
    // Absolute, http or https, without user information.
    QUrl url;
    // Name and value; a line break in either makes the request fail.
    QVector<QPair<QByteArray, QByteArray>> headers;
    // Secret sent as "Authorization: Bearer …" to the host of url and to nobody else; never logged. Over plain
    // http it goes to this machine (loopback) only.
    QByteArray bearerToken;
    // The body holds a secret (a password), which goes no other ways.
    bool hasSecretBody = false;
    // The body: either bytes, or a text that is turned into UTF-8 away from the GUI thread (used when not
    // null).
    QByteArray body;
    QString bodyText;
    // Adds "Content-Digest: sha-256=:…:" of the body.
    bool digestBody = false;
    // Sends the body only when it is JSON within the limits for foreign JSON (JsonGuard); otherwise the
    // answer is BadRequest with the reason. Checked away from the GUI thread.
    bool guardBody = false;
    // Further certificate authorities (PEM file); empty: those of the system only.
    QString caFile;
    WbHttpExpectation expectation;
    WbHttpLimits limits;
};
