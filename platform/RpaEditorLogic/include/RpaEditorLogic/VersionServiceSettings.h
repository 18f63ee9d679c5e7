#pragma once

#include <RpaEditorLogic/RpaEditorLogicExport.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>

// Where the version service is and as whom to speak to it. Told by the workstation, read by the request
// library at each request. GUI thread only.
class RPAEDITORLOGIC_EXPORT VersionServiceSettings : public QObject
{
    Q_OBJECT

public:
    // Wait before a failing load is sent once more: first, doubled each time, at most longest.
    struct RepeatSpacing
    {
        std::chrono::milliseconds first{1000};
        std::chrono::milliseconds longest{30000};
    };

    static VersionServiceSettings* Instance();

    // Origin of the service, with a path prefix if it has one: "http://127.0.0.1:8080", "https://host/rpa".
    // False, with nothing changed, unless it is a plain http(s) address. Another origin drops the token, so
    // that no server ever gets the token of another.
    bool SetBaseUrl(const QUrl& url);
    QUrl GetBaseUrl() const;

    // The session's secret; empty when nobody is signed in. Never logged.
    void SetToken(const QByteArray& token);
    QByteArray GetToken() const;

    // Lets token and password travel over plain http to another machine. False at first: such a request fails
    // instead.
    void SetAllowPlainSecrets(bool allow);
    bool GetAllowPlainSecrets() const;

    // Further certificate authorities (PEM file) beside those of the system; empty: none.
    void SetCaFile(const QString& path);
    QString GetCaFile() const;

    // Deadlines, caps and waits; the defaults are meant for users.
    void SetLimits(const WbHttpLimits& limits);
    WbHttpLimits GetLimits() const;
    void SetRepeatSpacing(const RepeatSpacing& spacing);
    RepeatSpacing GetRepeatSpacing() const;

signals:
    // Address or token changed.
    void SigChanged();
    // The service refused the current token (401): somebody must sign in again. The request that met it is
    // answered as failed all the same.
    void SigTokenRejected();

private:
    VersionServiceSettings() = default;

    QUrl baseUrl;
    QByteArray token;
    bool allowPlainSecrets = false;
    QString caFile;
    WbHttpLimits limits;
    RepeatSpacing repeatSpacing;
};
