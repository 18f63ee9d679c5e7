// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CallLog.h"
#include "EditorDriver.h"
#include "NotingParts.h"
#include "StandInEngine.h"
#include "StandInRequests.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RobotExecuteInfo.h>

#include <QObject>

#include <functional>
#include <memory>

// Each test has an author whose editor has nothing but stand-ins around it: no server, no engine, no web
// page. What the editor asks of them is in the CallLog.
class EditorCalls : public QObject
{
    Q_OBJECT

private slots:
    void init() { SetUp(); }
    void cleanup();

protected:
    void SetUp();
    using Fill = std::function<void(RpaAppData& content)>;

    // Launch information of "app1" with "key1", made by the signed-in author.
    static RobotExecuteInfo App(int kind = 0);
    // "v1" (甲版) and "v2" (乙版) in development, "v3" (丙版) in development, gray or online.
    static QVector<RpaAppSnapshotPtr> Versions(AppSnapshotState stateOfTheThird = AppSnapshotDevelop);
    // The content of a new app whose instructions name it.
    static QByteArray Content(const QString& instructions, const Fill& fill = {});

    // An editor with these versions, the first of them loaded; the log is empty then.
    void Open(const QVector<RpaAppSnapshotPtr>& versions, const QByteArray& content, int kind = 0);
    // With the three versions above.
    void Open(AppSnapshotState stateOfTheThird = AppSnapshotDevelop);

    // Picks a version that has not been loaded when this returns.
    void PickWithoutData(const QString& name);
    // Picks and loads it.
    void PickAndLoad(const QString& name);

    std::unique_ptr<NotingMonitor> monitor;
    std::unique_ptr<NotingPackages> packages;
    std::unique_ptr<EditorDriver> author;
};
