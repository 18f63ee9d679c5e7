// SPDX-License-Identifier: Apache-2.0

#include "ProblemRows_p.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QTreeWidgetItem>

namespace
{
QIcon IconOf(RpaProblemSeverity severity)
{
    switch (severity) {
    case RpaProblemSeverity::Error:
        return WbIcons::Get(QStringLiteral("error"), WbColor::DangerText);
    case RpaProblemSeverity::Warning:
        return WbIcons::Get(QStringLiteral("warning"), WbColor::WarningText);
    case RpaProblemSeverity::Hint:
        break;
    }
    return WbIcons::Get(QStringLiteral("info"), WbColor::AccentText);
}
} // namespace

void ProblemCounts::Add(const RpaProblem& problem, bool isIgnored)
{
    if (isIgnored)
        ++ignored;
    else if (problem.severity == RpaProblemSeverity::Error)
        ++errors;
    else
        ++(problem.severity == RpaProblemSeverity::Warning ? warnings : hints);
}

QString ProblemCounts::GetText() const
{
    if (errors + warnings + hints == 0)
        return QStringLiteral("没有发现问题");
    return QStringLiteral("错误 %1　警告 %2　提示 %3").arg(errors).arg(warnings).arg(hints);
}

bool ProblemRow::operator==(const ProblemRow& other) const
{
    return problem.id == other.problem.id && problem.message == other.problem.message &&
           problem.remedy == other.problem.remedy && problem.severity == other.problem.severity &&
           problem.fix == other.problem.fix && problem.place.line == other.problem.place.line &&
           reason == other.reason;
}

QTreeWidgetItem* ProblemRows::Make(const ProblemRow& shown)
{
    const auto& [problem, reason] = shown;
    const QString remedy = reason.isEmpty() ? problem.remedy : QStringLiteral("已忽略：%1").arg(reason);
    auto* row = new QTreeWidgetItem({problem.message, remedy, PlaceText(problem.place)});
    row->setData(MessageColumn, Qt::UserRole, QVariant::fromValue(problem));
    row->setIcon(MessageColumn, IconOf(problem.severity));
    for (int column = MessageColumn; column <= PlaceColumn; ++column)
        row->setToolTip(column, UIUtils::PlainToolTip(row->text(column)));
    return row;
}

RpaProblem ProblemRows::Get(const QTreeWidgetItem* row)
{
    return row ? row->data(MessageColumn, Qt::UserRole).value<RpaProblem>() : RpaProblem();
}

QString ProblemRows::FixText(RpaProblemFix fix)
{
    switch (fix) {
    case RpaProblemFix::ListPackage:
        return QStringLiteral("修复：添加依赖包");
    case RpaProblemFix::UnlistPackage:
        return QStringLiteral("修复：移除依赖包");
    case RpaProblemFix::CreateVariable:
        return QStringLiteral("修复：新建变量");
    case RpaProblemFix::RemoveArgument:
        return QStringLiteral("修复：移除参数");
    case RpaProblemFix::ClearProcess:
        return QStringLiteral("修复：取消按钮的流程");
    case RpaProblemFix::None:
        break;
    }
    return QStringLiteral("修复");
}

QString ProblemRows::PlaceText(const RpaProblemPlace& place)
{
    switch (place.area) {
    case RpaProblemArea::Process:
        return place.processName;
    case RpaProblemArea::Program:
        return place.line > 0 ? QStringLiteral("第 %1 行").arg(place.line) : QStringLiteral("程序");
    case RpaProblemArea::Page:
        return QStringLiteral("界面“%1”").arg(place.page);
    case RpaProblemArea::Packages:
        return QStringLiteral("依赖包");
    case RpaProblemArea::Elements:
        return QStringLiteral("捕获的元素");
    case RpaProblemArea::Manual:
        break;
    }
    return QStringLiteral("使用说明");
}
