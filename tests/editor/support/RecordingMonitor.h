// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbCore/IMonitorSystem.h>

#include <QList>
#include <QString>
#include <QStringList>

// Stands in for the workstation's usage monitor while it lives, and keeps what was reported.
class RecordingMonitor : public IMonitorSystem
{
public:
    struct Report
    {
        QString eventId;
        QString pageId;
        QList<QString> params;
    };

    RecordingMonitor() { IMonitorSystem::SetMonitorSystem(this); }
    ~RecordingMonitor() override { IMonitorSystem::SetMonitorSystem(nullptr); }

    void ReportEvent(const QString& eventId, const QString& pageId, const QList<QString>& params) override
    {
        reports.append({eventId, pageId, params});
    }

    const QList<Report>& GetReports() const { return reports; }
    QStringList GetEventIds() const
    {
        QStringList ids;
        for (const Report& report : reports)
            ids.append(report.eventId);
        return ids;
    }
    void Clear() { reports.clear(); }

private:
    QList<Report> reports;
};
