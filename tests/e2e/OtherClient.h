// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QUrl>

// Somebody else's client of the same version service, for the things that only another client does. Blocks
// its thread, which must not be the GUI thread.
class OtherClient
{
public:
    OtherClient(const QUrl& service, const QByteArray& token);

    // Overwrites a version's data with itself, except that it was written by a client of that API version.
    // False when the service refused; GetProblem() says why.
    bool OverwriteAs(const QString& appId, const QString& versionId, const QString& apiVersion);

    QString GetProblem() const { return problem; }

private:
    struct Answer
    {
        int status = 0;
        QByteArray etag;
        QByteArray body;
    };

    Answer Get(const QString& path);
    Answer Put(const QString& path, const QByteArray& body, const QByteArray& etag, const QString& name,
               const QString& apiVersion);

    const QUrl service;
    const QByteArray token;
    QString problem;
};
