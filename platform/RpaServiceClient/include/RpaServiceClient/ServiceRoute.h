// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <QJsonObject>
#include <QString>

// What the requests of the version service are made of: they go to the address, with the token and the limits of
// the settings as these are now. GUI thread only.
namespace ServiceRoute
{
// Asks for JSON. path: below the API's root; "%1" in it is the part, escaped.
RPASERVICECLIENT_EXPORT WbHttpRequest Fetch(const QByteArray& path, const QString& part = {});
// Changes something, once however often it is sent: it has a key of its own. Is answered with JSON.
RPASERVICECLIENT_EXPORT WbHttpRequest Change(const QByteArray& method, const QByteArray& path,
                                             const QString& part = {}, const QJsonObject& body = {});
// The same when its success is all that it brings.
RPASERVICECLIENT_EXPORT WbHttpRequest ChangeOnly(const QByteArray& method, const QByteArray& path,
                                                 const QString& part = {}, const QJsonObject& body = {});

// The request, but only for a version at that revision. 0: at any.
RPASERVICECLIENT_EXPORT WbHttpRequest AtRevision(WbHttpRequest request, int revision);

// Ids go into addresses, so they may hold nothing that an address gives a meaning to.
RPASERVICECLIENT_EXPORT bool IsValidId(const QString& id);
} // namespace ServiceRoute
