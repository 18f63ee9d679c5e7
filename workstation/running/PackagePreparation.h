// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/IRunPreparation.h>

#include <QObject>
#include <QTimer>

class PackageService;

// Lets runs wait for their packages in the open: says that one waits and for what, lets it be stopped, and
// keeps every other run from starting while packages are being installed or were left half installed.
class PackagePreparation : public QObject, public IRunPreparation
{
    Q_OBJECT

public:
    // The service must outlive this object.
    explicit PackagePreparation(PackageService* service, QObject* parent = nullptr);
    ~PackagePreparation() override;

    // No run waits any more: the app that wanted one is left.
    void Leave();

    QString GetRefusal() override;
    void Stop() override;

private:
    void SlotPendingChanged();
    void SlotTellWait();
    void SlotProgress(int step, int steps, const QString& text);
    void SlotEnded(const QString& problem);

    PackageService* const packages;
    QTimer notice;
    bool waits = false;
    bool stopped = false;
};
