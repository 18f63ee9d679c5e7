// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <RpaServiceClient/VersionServiceRecords.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <QString>

// The operations of the version service as requests, to the address and with the token of the settings.
namespace ServiceRoutes
{
// What a save sends.
struct VersionContent
{
    QString name;
    QString description;
    QString apiVersion;
    QString json;
};

// Ids go into addresses, so they may hold nothing that an address gives a meaning to.
RPASERVICECLIENT_EXPORT bool IsValidId(const QString& id);

RPASERVICECLIENT_EXPORT WbHttpRequest ListVersions(const QString& appId);
RPASERVICECLIENT_EXPORT WbHttpRequest CreateVersion(const QString& appId, const VersionContent& content,
                                                    const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest CreateVersion(const QString& appId,
                                                    const VersionServiceContent& content,
                                                    const QByteArray& key);
// A revision of 0 is not sent.
RPASERVICECLIENT_EXPORT WbHttpRequest OverwriteVersion(const QString& versionId,
                                                       const VersionContent& content, int revision,
                                                       const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest VersionData(const QString& versionId);
RPASERVICECLIENT_EXPORT WbHttpRequest DeleteVersion(const QString& versionId, int revision,
                                                    const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest ReleaseVersion(const QString& versionId, int publishType, int revision,
                                                     const QByteArray& key);

RPASERVICECLIENT_EXPORT WbHttpRequest SignIn(const QString& account, const QString& password, bool stay,
                                             const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest CurrentSession();
RPASERVICECLIENT_EXPORT WbHttpRequest SignOut(const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest ListApps(const QString& nameFilter);
RPASERVICECLIENT_EXPORT WbHttpRequest GetApp(const QString& appId);
// anyName: under the next free name when that one is taken.
RPASERVICECLIENT_EXPORT WbHttpRequest CreateApp(const QString& name, int kind, const QByteArray& key,
                                                bool anyName = false);
RPASERVICECLIENT_EXPORT WbHttpRequest RenameApp(const QString& appId, const QString& name,
                                                const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest SetTags(const QString& appId, const QStringList& tags,
                                              const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest CopyApp(const QString& appId, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest DeleteApp(const QString& appId, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest DeletedApps();
RPASERVICECLIENT_EXPORT WbHttpRequest RestoreApp(const QString& appId, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest PurgeApp(const QString& appId, const QByteArray& key);

RPASERVICECLIENT_EXPORT WbHttpRequest OnlineApps();
RPASERVICECLIENT_EXPORT WbHttpRequest GrayApps();
RPASERVICECLIENT_EXPORT WbHttpRequest ListReleases(const QString& appId);
RPASERVICECLIENT_EXPORT WbHttpRequest TakeBack(const VersionServiceTakeBack& order, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest ListSaves(const QString& appId);
RPASERVICECLIENT_EXPORT WbHttpRequest NoteSave(const QString& versionId, int revision, const QString& note,
                                               const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest ListInvitations(const QString& appId);
RPASERVICECLIENT_EXPORT WbHttpRequest CreateInvitation(const QString& appId, int validDays, int mostUses,
                                                       const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest RevokeInvitation(const QString& invitationId, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest RedeemInvitation(const QString& code, const QByteArray& key);
RPASERVICECLIENT_EXPORT WbHttpRequest Audit(const QString& beforeId, int limit);

// A key for one act of the author; the same key makes the server do it once.
RPASERVICECLIENT_EXPORT QByteArray NewKey();
} // namespace ServiceRoutes
