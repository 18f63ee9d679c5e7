// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/releases/ReleaseVersionRequest.h>

#include <QObject>
#include <QQueue>
#include <QString>
#include <QVector>

// One version of a sample app; what release it is given after it was saved (0: none, 1: gray, 2: online).
struct SampleVersion
{
    QString name;
    QString description;
    QString dataFile;
    int release = 0;
};

struct SampleApp
{
    QString name;
    int kind = 0;
    QVector<SampleVersion> versions;
};

// Puts the sample apps onto a service that has no app yet, by the way an author takes: create, save, release. No
// editor hears of it.
class SampleInstaller : public QObject
{
    Q_OBJECT

public:
    explicit SampleInstaller(QObject* parent = nullptr) : QObject(parent) {}

    // The samples that come with the workstation.
    static QVector<SampleApp> ReadSamples();

    // Does nothing while it is under way.
    void Start();

signals:
    // complete: the samples are there, or the service had apps already and needs none.
    void SigFinished(bool complete);

private:
    void CreateNextApp();
    void SaveNextVersion();
    void ReleaseNext();
    void Finish(bool complete);

    // Goes on with what came, and ends when nothing did.
    template <typename Request, typename Next>
    void Send(const Request& request, const Next& next);

    VersionServiceClient client;
    QQueue<SampleApp> apps;
    QString appId;                  // of the app under way
    QQueue<SampleVersion> versions; // those of it that are not saved yet
    // Those to be released, once all are saved: of an only version a release leaves a copy.
    QQueue<ReleaseVersionRequest> releases;
    bool running = false;
};
