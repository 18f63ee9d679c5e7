// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbCore/WbCoreExport.h>

#include <QList>
#include <QString>

// Usage events: what users do, for the workstation's statistics. Fire and forget.
class WBCORE_EXPORT IMonitorSystem
{
public:
    virtual ~IMonitorSystem();

    // The process-wide monitor: the one given to SetMonitorSystem, else the built-in one that queues on disk.
    static IMonitorSystem* GetMonitorSystem();

    // Replaces the monitor; null goes back to the built-in one. The caller keeps ownership.
    static void SetMonitorSystem(IMonitorSystem* monitor);

    // Records one event that happened on a page. Any thread; never blocks on disk or network.
    virtual void ReportEvent(const QString& eventId, const QString& pageId, const QList<QString>& params) = 0;
};
