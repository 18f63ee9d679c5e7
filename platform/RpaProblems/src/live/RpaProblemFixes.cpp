// SPDX-License-Identifier: Apache-2.0

#include "KnownModules_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProblems/RpaProblemFixes.h>
#include <RpaProcessData/RpaPackageInfo.h>

#include <algorithm>

namespace
{
using PackageItems = QList<QSharedPointer<PackageItem>>;

PackageItems::iterator Find(PackageItems& items, const QString& package)
{
    return std::find_if(items.begin(), items.end(), [&package](const QSharedPointer<PackageItem>& item) {
        return KnownModules::Normalised(item->name) == KnownModules::Normalised(package);
    });
}

bool ListPackage(RpaAppData& app, const QString& package)
{
    PackageItems items = app.GetPackageInfo()->GetListPackageItemPtr();
    if (Find(items, package) != items.end())
        return false;
    items.append(QSharedPointer<PackageItem>::create(PackageItem{package, QString()}));
    app.GetPackageInfo()->SetListPackageItemPtr(items);
    return true;
}

bool UnlistPackage(RpaAppData& app, const QString& package)
{
    PackageItems items = app.GetPackageInfo()->GetListPackageItemPtr();
    const auto item = Find(items, package);
    if (item == items.end())
        return false;
    items.erase(item);
    app.GetPackageInfo()->SetListPackageItemPtr(items);
    return true;
}

bool ClearProcess(RpaAppData& app, const RpaProblem& problem)
{
    for (int page = 0; page < app.GetUIDataManager()->GetCount(); ++page) {
        const RpaUIData& data = *app.GetUIDataManager()->GetUIData(page);
        if (data.GetName() != problem.place.page)
            continue;
        for (int i = 0; i < data.GetToolData()->GetCount(); ++i) {
            RpaToolItem tool = data.GetToolData()->GetItem(i);
            if (tool.id != problem.place.item || tool.processName != problem.subject)
                continue;
            tool.processName.clear();
            return data.GetToolData()->SetItem(i, tool);
        }
    }
    return false;
}

bool Change(RpaAppData& app, const RpaProblem& problem)
{
    switch (problem.fix) {
    case RpaProblemFix::ListPackage:
        return ListPackage(app, problem.subject);
    case RpaProblemFix::UnlistPackage:
        return UnlistPackage(app, problem.subject);
    case RpaProblemFix::ClearProcess:
        return ClearProcess(app, problem);
    default:
        return false;
    }
}
} // namespace

bool RpaProblemFixes::MakeInApp(RpaAppData& app, const RpaProblem& problem)
{
    if (!Change(app, problem))
        return false;
    app.SetModified(true);
    return true;
}

bool RpaProblemFixes::MakeInStatement(RpaStatement& statement, const RpaProblem& problem)
{
    return problem.fix == RpaProblemFix::RemoveArgument && statement.arguments.remove(problem.subject) > 0;
}

RpaStatement RpaProblemFixes::MakeVariable(const RpaProblem& problem)
{
    RpaStatement statement;
    statement.command = QStringLiteral("variable.set");
    statement.arguments.insert(QStringLiteral("name"), problem.subject);
    return statement;
}
