// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "UsageReports.h"

#include <QObject>

class Session;
class UsageSection;
class WorkstationSettings;

// What users do, told to the version service while somebody is signed in and the settings allow it, and the way
// of administrators to its counts.
class UsageFlow : public QObject
{
    Q_OBJECT

public:
    // queueFolder: where events wait for the service. window: over which the counts are shown.
    UsageFlow(const QString& queueFolder, Session* session, WorkstationSettings* settings,
              UsageSection* section, QWidget* window);

    // Before the session ends; what was not sent waits for the next start.
    void End();

private:
    void Begin();
    void ShowCounts();

    Session* const session;
    WorkstationSettings* const settings;
    UsageSection* const section;
    QWidget* const window;
    UsageReports reports;
};
