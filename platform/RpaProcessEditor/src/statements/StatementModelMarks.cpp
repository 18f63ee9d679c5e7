// SPDX-License-Identifier: Apache-2.0

// Breakpoints and the stop of a program in the model of statements.
#include "StatementModel_p.h"

#include <WbBaseUI/UIUtils.h>

#include <utility>

void StatementModel::SetBreakpoints(const QHash<QString, BreakpointMark>& marks)
{
    const QHash<QString, BreakpointMark> former = std::exchange(breakpoints, marks);
    for (auto it = former.begin(); it != former.end(); ++it)
        if (!marks.contains(it.key()))
            RepaintStatement(it.key());
    for (auto it = marks.begin(); it != marks.end(); ++it)
        if (!(former.value(it.key()) == *it))
            RepaintStatement(it.key());
}

void StatementModel::SetStop(const QString& id, Stop stop)
{
    const QString former = std::exchange(stopId, id);
    stopKind = stop;
    RepaintStatement(former);
    RepaintStatement(id);
}

StatementModel::Stop StatementModel::StopAt(const RpaStatementNode& node) const
{
    return !stopId.isEmpty() && stopId == node.GetId() ? stopKind : NotStopped;
}

QVariant StatementModel::GutterData(const RpaStatementNode& node, int role) const
{
    const QString mark = breakpoints.value(node.GetId()).text;
    if (role == Qt::ToolTipRole)
        return UIUtils::PlainToolTip(mark);
    if (role != Qt::AccessibleTextRole)
        return QVariant();
    const QString line = QStringLiteral("第 %1 行").arg(LineOf(&node));
    return mark.isEmpty() ? line : line + QStringLiteral("，") + mark;
}
