// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEditorLogic/VersionServiceRecords.h>
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
bool IsValidId(const QString& id);

WbHttpRequest ListVersions(const QString& appId);
WbHttpRequest CreateVersion(const QString& appId, const VersionContent& content, const QByteArray& key);
WbHttpRequest CreateVersion(const QString& appId, const VersionServiceContent& content,
                            const QByteArray& key);
// A revision of 0 is not sent.
WbHttpRequest OverwriteVersion(const QString& versionId, const VersionContent& content, int revision,
                               const QByteArray& key);
WbHttpRequest VersionData(const QString& versionId);
WbHttpRequest DeleteVersion(const QString& versionId, int revision, const QByteArray& key);
WbHttpRequest ReleaseVersion(const QString& versionId, int publishType, int revision, const QByteArray& key);

WbHttpRequest SignIn(const QString& account, const QString& password, bool stay, const QByteArray& key);
WbHttpRequest CurrentSession();
WbHttpRequest SignOut(const QByteArray& key);
WbHttpRequest ListApps(const QString& nameFilter);
WbHttpRequest GetApp(const QString& appId);
// anyName: under the next free name when that one is taken.
WbHttpRequest CreateApp(const QString& name, int kind, const QByteArray& key, bool anyName = false);
WbHttpRequest RenameApp(const QString& appId, const QString& name, const QByteArray& key);
WbHttpRequest SetTags(const QString& appId, const QStringList& tags, const QByteArray& key);
WbHttpRequest CopyApp(const QString& appId, const QByteArray& key);
WbHttpRequest DeleteApp(const QString& appId, const QByteArray& key);
WbHttpRequest DeletedApps();
WbHttpRequest RestoreApp(const QString& appId, const QByteArray& key);
WbHttpRequest PurgeApp(const QString& appId, const QByteArray& key);

WbHttpRequest OnlineApps();
WbHttpRequest GrayApps();
WbHttpRequest ListReleases(const QString& appId);
WbHttpRequest TakeBack(const VersionServiceTakeBack& order, const QByteArray& key);
WbHttpRequest ListSaves(const QString& appId);
WbHttpRequest NoteSave(const QString& versionId, int revision, const QString& note, const QByteArray& key);
WbHttpRequest ListInvitations(const QString& appId);
WbHttpRequest CreateInvitation(const QString& appId, int validDays, int mostUses, const QByteArray& key);
WbHttpRequest RevokeInvitation(const QString& invitationId, const QByteArray& key);
WbHttpRequest RedeemInvitation(const QString& code, const QByteArray& key);
WbHttpRequest Audit(const QString& beforeId, int limit);

// A key for one act of the author; the same key makes the server do it once.
QByteArray NewKey();
} // namespace ServiceRoutes
