// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/RpaServiceClientExport.h>
#include <WbHttpModule/WbHttpAnswer.h>

#include <QJsonObject>
#include <QString>
#include <QVector>

#include <optional>

// Reads the answers of the version service. Nothing in them is believed: a record that misses a field or has
// one out of range makes the whole answer unusable.
namespace ServiceAnswers
{
struct VersionRecord
{
    RpaAppSnapshotPtr snapshot;
    int revision = 0;
    QByteArray sha256; // lower-case hex
};

struct ReleaseRecord
{
    int result = 0;
    bool needTip = false;
    QString message;
    VersionRecord version;
};

RPASERVICECLIENT_EXPORT std::optional<VersionRecord> ReadVersion(const QJsonObject& json);
RPASERVICECLIENT_EXPORT std::optional<QVector<VersionRecord>> ReadVersions(const QByteArray& body);
RPASERVICECLIENT_EXPORT std::optional<ReleaseRecord> ReadRelease(const QByteArray& body);

// The version record of a confirmed save; empty when it is not the confirmation of what was sent.
RPASERVICECLIENT_EXPORT std::optional<VersionRecord> ReadSaved(const WbHttpAnswer& answer);

// Revision of an ETag ("7" in quotes); 0 when it is none.
RPASERVICECLIENT_EXPORT int RevisionOf(const WbHttpAnswer& answer);

// Stable name of a refusal ("name-taken"); empty when the answer is none of the service's.
RPASERVICECLIENT_EXPORT QString RefusalCode(const WbHttpAnswer& answer);

// Why the request failed, in the author's words; never empty.
RPASERVICECLIENT_EXPORT QString FailureText(const WbHttpAnswer& answer);

// For an answer that came through but cannot be used.
RPASERVICECLIENT_EXPORT QString UnusableText();
// For content of a newer client; the words by which editors refuse it.
RPASERVICECLIENT_EXPORT QString TooOldText();

RPASERVICECLIENT_EXPORT QJsonObject ObjectOf(const QByteArray& body);
} // namespace ServiceAnswers
