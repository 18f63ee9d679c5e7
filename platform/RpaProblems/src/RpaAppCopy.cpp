// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProblems/RpaAppCopy.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaUiaNodeManager.h>

namespace
{
QVector<RpaAppCopy::Process> ProcessesOf(const ProcessDataManager& manager)
{
    QVector<RpaAppCopy::Process> processes;
    for (int i = 0; i < manager.GetCount(); ++i) {
        const RpaProcess& process = *manager.GetProcess(i);
        processes.append({process.GetName(), process.GetStatements(), process.GetProgramText()});
    }
    return processes;
}

QVector<RpaAppCopy::Page> PagesOf(const RpaUIDataManager& manager)
{
    QVector<RpaAppCopy::Page> pages;
    for (int i = 0; i < manager.GetCount(); ++i) {
        const RpaUIData& page = *manager.GetUIData(i);
        pages.append({page.GetName(), page.GetToolData()->GetItems(), page.GetParamData()->GetItems()});
    }
    return pages;
}

QVector<PackageItem> PackagesOf(const RpaPackageInfo& info)
{
    QVector<PackageItem> packages;
    const QList<QSharedPointer<PackageItem>> items = info.GetListPackageItemPtr();
    for (const QSharedPointer<PackageItem>& item : items)
        packages.append(*item);
    return packages;
}
} // namespace

RpaAppCopy RpaAppCopy::Of(const RpaAppData& app)
{
    RpaAppCopy copy;
    copy.isProgram = app.GetAppExtendInfo()->GetAppKind() != 0;
    copy.processes = ProcessesOf(*app.GetProcessDataManager());
    copy.pages = PagesOf(*app.GetUIDataManager());
    copy.packages = PackagesOf(*app.GetPackageInfo());
    copy.htmlNodes = app.GetHtmlNodeManager()->GetNodes();
    copy.uiaNodes = app.GetUiaNodeManager()->GetNodes();
    copy.manual = app.GetAppExtendInfo()->GetManual();
    return copy;
}
