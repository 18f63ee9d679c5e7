// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppFile.h"
#include "AppTransfer.h"

#include <RpaServiceClient/VersionServiceClient.h>

#include <QThreadPool>

// Makes a new app of a file, which is checked as a whole before anything is made. What cannot be finished is
// taken away again.
class AppImport : public AppTransfer
{
    Q_OBJECT

public:
    explicit AppImport(const QString& path, QObject* parent = nullptr);
    ~AppImport() override;

    void Start() override;
    void Cancel() override;

private:
    void Create();
    void SetTags();
    void ReadNext();
    void Send(const VersionServiceContent& version);
    void Read(const std::function<bool(QString* problem)>& work, const std::function<void()>& then);
    void GiveUp(const QString& problem);
    void End(const QString& problem);

    const QString path;
    VersionServiceClient client;
    AppFile::Reader reader; // of the worker's, as are the next two while it works
    AppFile::Head head;
    VersionServiceContent next;
    QString appId;
    int done = 0;
    bool isCancelled = false;
    bool hasEnded = false;
    QThreadPool worker; // last: its thread uses the reader
};
