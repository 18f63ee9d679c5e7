// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/RpaPackageExport.h>

#include <QObject>
#include <QString>

// Installs and configures the packages of the app being edited. Package lists travel as the JSON text of
// RpaPackageInfo. GUI thread only.
class RPAPACKAGE_EXPORT IPackageService : public QObject
{
    Q_OBJECT

public:
    explicit IPackageService(QObject* parent = nullptr);
    ~IPackageService() override;

    // Installs what the list names; SigInstallFinished follows, whether it worked or not.
    virtual void Install(const QString& json) = 0;

    // Makes the list the current configuration. Emits neither of the signals below.
    virtual void Reset(const QString& json) = 0;

signals:
    // An Install() is over; what became of it is seen in the list.
    void SigInstallFinished();
    // The user changed and saved the list.
    void SigSaveConfig(const QString& json);
};
