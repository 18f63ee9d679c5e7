// SPDX-License-Identifier: Apache-2.0

#include "UsageFlow.h"

#include "Session.h"
#include "UsageDialog.h"
#include "UsageSection.h"
#include "WorkstationSettings.h"

UsageFlow::UsageFlow(const QString& queueFolder, Session* ofUser, WorkstationSettings* store,
                     UsageSection* ofPage, QWidget* mainWindow)
    : session(ofUser), settings(store), section(ofPage), window(mainWindow), reports(queueFolder)
{
    reports.Allow(settings->GetUsageReports());
    connect(settings, &WorkstationSettings::SigUsageReportsChanged, &reports, &UsageReports::Allow);
    connect(session, &Session::SigSignedIn, this, &UsageFlow::Begin);
    connect(session, &Session::SigExpired, this, &UsageFlow::End);
    connect(session, &Session::SigSignedOut, this, &UsageFlow::End);
    connect(section, &UsageSection::SigShowCounts, this, &UsageFlow::ShowCounts);
}

void UsageFlow::Begin()
{
    reports.Begin(session->IsEmbedded() ? QStringLiteral("embedded")
                                        : settings->GetServerAddress().toString(),
                  session->GetPin());
    section->ShowAdministrator(session->IsAdministrator());
}

void UsageFlow::End()
{
    reports.End();
    section->ShowAdministrator(false);
}

void UsageFlow::ShowCounts()
{
    auto* dialog = new UsageDialog(settings->GetDateLanguage(), window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
