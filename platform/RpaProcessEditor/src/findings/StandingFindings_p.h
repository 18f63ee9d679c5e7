// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessData/RpaStatement.h>

#include <QHash>
#include <QObject>
#include <QTimer>

// What a check or a run found in an app, less what has been mended since. Nothing is added until the next
// check: the author is not to be scolded while writing.
class StandingFindings : public QObject
{
    Q_OBJECT

public:
    explicit StandingFindings(QObject* parent = nullptr);

    // Forgets what was found in the app before.
    void SetApp(const RpaAppDataPtr& appData);

    // Takes those that are of the app.
    void Take(const QList<RpaCheckInfo>& list);
    const QList<RpaCheckInfo>& Get() const { return findings; }

signals:
    // Some are mended.
    void SigChanged();

private:
    QList<RpaCheckInfo> FindAgain() const;
    QList<RpaCheckInfo> CheckFrom(const QString& processName) const;
    QString RootOf(const QList<RpaCheckInfo>& list) const;
    bool Stands(const RpaCheckInfo& info, const QList<RpaCheckInfo>& again) const;
    void Look();

    RpaAppDataPtr app;
    QList<RpaCheckInfo> findings;
    QHash<QString, RpaStatement> atFault; // as the statements were when it was found
    QString root;                         // the process that was checked
    QTimer looking;
};
