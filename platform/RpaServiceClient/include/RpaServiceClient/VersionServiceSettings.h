// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>

// Where the version service is and as whom to speak to it. Told by the workstation, read by the request
// library at each request. GUI thread only.
class RPASERVICECLIENT_EXPORT VersionServiceSettings : public QObject
{
    Q_OBJECT

public:
    // Wait before a failing load is sent once more: first, doubled each time, at most longest.
    struct RepeatSpacing
    {
        std::chrono::milliseconds first{1000};
        std::chrono::milliseconds longest{30000};
    };

    // Whether the address is that of the service now.
    enum class Whereabouts
    {
        Known,
        Awaited, // the service left it, and will be found elsewhere
        Lost,    // the service left it, and does not come back by itself
    };

    // The one of the process.
    static VersionServiceSettings* Instance();

    // Origin of the service, with a path prefix if it has one: "http://127.0.0.1:8080", "https://host/rpa".
    // False, with nothing changed, unless it is a plain http(s) address. Another origin drops the token, so
    // that no server ever gets the token of another.
    bool SetBaseUrl(const QUrl& url);
    QUrl GetBaseUrl() const { return baseUrl; }

    // The service is gone from its address, where anybody may listen now: from here on nothing is sent there,
    // least of all the token. awaited: requests wait until it is back, at most as long as their limits allow;
    // otherwise they are answered as failed at once.
    void LeaveAddress(bool awaited);
    // The same service, with the same accounts and content, is back: requests of whoever is signed in follow
    // it to this address, with this token in place of the former. False, with nothing changed, for an address
    // that SetBaseUrl() would refuse too.
    bool ReturnAt(const QUrl& url, const QByteArray& token);
    // Another service takes the place of this one; ReturnAt() or SetBaseUrl() tell where it is. What was
    // meant for this one does not follow. Drops the token.
    void AwaitAnother();
    Whereabouts GetWhereabouts() const { return whereabouts; }

    // Requests of one number are for the same service and the same account.
    quint64 GetIdentityNumber() const { return identity; }
    // Another number each time that the service leaves an address or comes to one after that.
    quint64 GetPlaceNumber() const { return place; }

    // The session's secret; empty when nobody is signed in. Never logged.
    void SetToken(const QByteArray& token);
    QByteArray GetToken() const { return token; }

    // Further certificate authorities (PEM file) beside those of the system; empty: none.
    void SetCaFile(const QString& path) { caFile = path; }
    QString GetCaFile() const { return caFile; }

    // Deadlines, caps and waits; the defaults are meant for users.
    void SetLimits(const WbHttpLimits& value) { limits = value; }
    WbHttpLimits GetLimits() const { return limits; }
    void SetRepeatSpacing(const RepeatSpacing& value) { repeatSpacing = value; }
    RepeatSpacing GetRepeatSpacing() const { return repeatSpacing; }

signals:
    // Address, whereabouts or token changed.
    void SigChanged();
    // The service refused the current token (401): somebody must sign in again. The request that met it is
    // answered as failed all the same.
    void SigTokenRejected();

private:
    VersionServiceSettings() = default;

    static bool IsServiceAddress(const QUrl& url);

    QUrl baseUrl;
    Whereabouts whereabouts = Whereabouts::Known;
    quint64 identity = 0;
    quint64 place = 0;
    QByteArray token;
    QString caFile;
    WbHttpLimits limits;
    RepeatSpacing repeatSpacing;
};
