// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppFile.h"
#include "AppRecord.h"
#include "AppTransfer.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QThreadPool>

// Writes an app with all its versions, oldest first, into a file.
class AppExport : public AppTransfer
{
    Q_OBJECT

public:
    AppExport(const AppRecord& app, const QString& path, QObject* parent = nullptr);
    ~AppExport() override;

    void Start() override;
    void Cancel() override;

private:
    void Begin(const QVector<VersionServiceVersion>& newestFirst);
    void FetchNext();
    void Write(const std::function<bool(QString* problem)>& work, const std::function<void()>& then);
    void End(const QString& problem);

    const AppRecord app;
    const QString path;
    VersionServiceClient client;
    AppFile::Writer writer; // of the worker's
    QVector<VersionServiceVersion> versions;
    int done = 0;
    bool hasEnded = false;
    QThreadPool worker; // last: its thread uses the writer
};
