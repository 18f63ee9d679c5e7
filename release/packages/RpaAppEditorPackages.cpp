// SPDX-License-Identifier: Apache-2.0

// Keeps the app's package list in step with its process and with the package service.
#include "JsonText.h"
#include "RpaAppEditorMembers.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>

void RpaAppEditorWidget::InitVisiualPackage()
{
    RpaPackageInfo used(nullptr);
    m->appData->GetProcessDataManager()->GetPackageInfo(used);
    RpaPackageInfo* const kept = m->appData->GetPackageInfo();
    if (kept->IsEqual(used))
        return;
    m->appData->SetModified(true);
    kept->SetPackageInfo(used);
}

// Installs once in the editor's life, before the first visual run that needs packages; then the run goes on.
void RpaAppEditorWidget::CheckPackage(bool visual)
{
    if (!m->appData)
        return;
    if (!visual || !m->firstPackageCheck || m->appData->GetPackageInfo()->IsEmpty()) {
        SlotCheckPackageFinished();
        return;
    }

    m->firstPackageCheck = false;
    const QString packages = JsonText(m->appData->GetPackageInfo()->ToJson());
    IPackageService* const service = RpaPackageModule::Instance()->GetService();
    if (!service)
        return;
    connect(service, &IPackageService::SigInstallFinished, this,
            &RpaAppEditorWidget::SlotCheckPackageFinished);
    service->Install(packages);
}

void RpaAppEditorWidget::UpdatePackageInfo(const QString& json)
{
    if (!m->appData)
        return;
    const auto packages = QSharedPointer<RpaPackageInfo>::create(nullptr);
    // The service hands the text over in the local encoding, unlike the way there.
    packages->Parse(json.toLocal8Bit());
    m->appData->GetPackageInfo()->SetListPackageItemPtr(packages->GetListPackageItemPtr());
}

void RpaAppEditorWidget::SlotUpdatePackageInfo(const QString& json)
{
    UpdatePackageInfo(json);
    if (m->appData)
        m->appData->SetModified(true);
}

void RpaAppEditorWidget::ResetPackageInfo()
{
    IPackageService* const service = RpaPackageModule::Instance()->GetService();
    if (service && m->appData)
        service->Reset(JsonText(m->appData->GetPackageInfo()->ToJson()));
}
