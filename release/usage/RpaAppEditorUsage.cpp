// SPDX-License-Identifier: Apache-2.0

// What authors do, for the workstation's statistics.
#include "RpaAppEditorMembers.h"

#include <OxBase/OxJsonUtil.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbCore/IMonitorSystem.h>
#include <WbCore/WbGlobalData.h>

#include <QMap>

void RpaAppEditorWidget::ReportAction(const QString& eventId) const
{
    IMonitorSystem::GetMonitorSystem()->ReportEvent(eventId, QStringLiteral("OXA_AppDevelop"), {});
}

void RpaAppEditorWidget::UploadTesselExecute(const QString& processName)
{
    const WbGlobalData* const user = WbGlobalData::Instance();
    QMap<QString, QString> payload;
    payload.insert(QStringLiteral("clickId"),
                   m->appData ? m->appData->GetAppExtendInfo()->GetAppId() : QStringLiteral(""));
    payload.insert(QStringLiteral("pin"), user->GetPin());
    payload.insert(QStringLiteral("venderId"), QString::number(user->GetVenderId()));
    payload.insert(QStringLiteral("clickType"), QStringLiteral("develop"));
    payload.insert(QStringLiteral("processName"), processName);
    IMonitorSystem::GetMonitorSystem()->ReportEvent(QStringLiteral("OXA_MyApplications_Execute"),
                                                    QStringLiteral("OXA_MyApplications"),
                                                    {OxJsonUtil::ToJsonString(payload)});
}
