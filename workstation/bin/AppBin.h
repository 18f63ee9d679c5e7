// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

#include <QObject>

class BinDialog;
class QWidget;

// Puts apps into the bin, and works the bin: restores apps and takes them out for good.
class AppBin : public QObject
{
    Q_OBJECT

public:
    // Asks the user first; the question stands over the window.
    void Delete(const AppRecord& app, QWidget* window);
    void Show(DateLanguage language, QWidget* window);

signals:
    // appId: the app that came back, empty when one went.
    void SigChanged(const QString& appId);

private:
    void Load(BinDialog* dialog);
    void Restore(BinDialog* dialog, const VersionServiceApp& app);
    void Purge(BinDialog* dialog, const QVector<VersionServiceApp>& apps);

    VersionServiceClient client;
};
