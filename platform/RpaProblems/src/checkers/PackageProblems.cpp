// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"
#include "KnownModules_p.h"
#include "ProgramImports_p.h"

#include <QSet>

namespace
{
QString PackageFor(const QString& module)
{
    const QString known = KnownModules::PackageOf(module);
    return known.isEmpty() ? KnownModules::Normalised(module) : known;
}

QSet<QString> Listed(const RpaAppCopy& app)
{
    QSet<QString> names;
    for (const PackageItem& item : app.packages)
        names.insert(KnownModules::Normalised(item.name));
    return names;
}

void FindUnlisted(const RpaAppCopy::Process& process, const QVector<ProgramImport>& imports,
                  const RpaAppCopy& app, ProblemList& found)
{
    QSet<QString> seen = Listed(app);
    for (const ProgramImport& import : imports) {
        const QString package = PackageFor(import.module);
        if (KnownModules::IsBuiltIn(import.module) || seen.contains(package))
            continue;
        seen.insert(package); // the first import is enough
        RpaProblem problem;
        problem.rule = QStringLiteral("unlisted-package");
        problem.severity = RpaProblemSeverity::Warning;
        problem.place.area = RpaProblemArea::Program;
        problem.place.processName = process.name;
        problem.place.line = import.line;
        problem.subject = package;
        problem.message = QStringLiteral("程序导入了“%1”，但依赖包中没有“%2”").arg(import.module, package);
        problem.remedy = QStringLiteral("请在依赖包中添加它，否则在别人的电脑上可能无法运行");
        if (!KnownModules::PackageOf(import.module).isEmpty())
            problem.fix = RpaProblemFix::ListPackage;
        found.Add(problem);
    }
}

void FindUnused(const QSet<QString>& used, const RpaAppCopy& app, ProblemList& found)
{
    for (const PackageItem& item : app.packages) {
        const QString name = KnownModules::Normalised(item.name);
        if (used.contains(name))
            continue;
        RpaProblem problem;
        problem.rule = QStringLiteral("unused-package");
        problem.severity = RpaProblemSeverity::Hint;
        problem.place.area = RpaProblemArea::Packages;
        problem.subject = item.name;
        problem.message = QStringLiteral("依赖包“%1”没有被使用").arg(item.name);
        problem.remedy = QStringLiteral("如果不再需要，请把它从依赖包中移除");
        if (KnownModules::KnowsPackage(name))
            problem.fix = RpaProblemFix::UnlistPackage;
        found.Add(problem);
    }
}

// A save lists what the statements need by itself, so none of those can be missing.
QSet<QString> NeededByStatements(const CheckedApp& app)
{
    RpaPackageInfo needed;
    app.Processes().GetPackageInfo(needed);
    QSet<QString> names;
    const QList<QSharedPointer<PackageItem>> items = needed.GetListPackageItemPtr();
    for (const QSharedPointer<PackageItem>& item : items)
        names.insert(KnownModules::Normalised(item->name));
    return names;
}
} // namespace

void Checkers::FindPackageProblems(const CheckedApp& app, ProblemList& found)
{
    if (!app.Get().isProgram) {
        FindUnused(NeededByStatements(app), app.Get(), found);
        return;
    }
    QSet<QString> used;
    for (const RpaAppCopy::Process& process : app.Get().processes) {
        const QVector<ProgramImport> imports = ProgramImports::Read(process.programText);
        for (const ProgramImport& import : imports)
            used.insert(PackageFor(import.module));
        FindUnlisted(process, imports, app.Get(), found);
    }
    FindUnused(used, app.Get(), found);
}
