// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "StatementFindBar_p.h"
#include "StatementView_p.h"

#include <algorithm>

namespace
{
bool Contains(const RpaStatement& values, const QString& text)
{
    if (CommandTexts::Title(values.command).contains(text, Qt::CaseInsensitive) ||
        values.note.contains(text, Qt::CaseInsensitive) || values.output.contains(text, Qt::CaseInsensitive))
        return true;
    return std::any_of(values.arguments.begin(), values.arguments.end(), [&text](const QString& argument) {
        return argument.contains(text, Qt::CaseInsensitive);
    });
}
} // namespace

StatementFindBar::StatementFindBar(StatementView* searched, QWidget* parent)
    : WbFindBar(QStringLiteral("在流程中查找"), parent), view(searched)
{
    setObjectName(QStringLiteral("statementFindBar"));
    connect(this, &WbFindBar::SigTextChanged, this, &StatementFindBar::SlotTextChanged);
    connect(this, &WbFindBar::SigFind, this, &StatementFindBar::Find);
    connect(this, &WbFindBar::SigClosed, this, [this] { view->setFocus(); });
}

void StatementFindBar::SlotTextChanged()
{
    const QStringList ids = Matches();
    ShowCount(ids.size());
    const QString current = view->currentIndex().data(StatementModel::IdRole).toString();
    if (!ids.isEmpty() && !ids.contains(current))
        FindNext();
}

QStringList StatementFindBar::Matches() const
{
    QStringList ids;
    const RpaProcess* process = view->Statements()->Process();
    const QString text = GetText().trimmed();
    if (!process || text.isEmpty())
        return ids;
    process->ForEach([&ids, &text](const RpaStatementNode& node) {
        if (Contains(node.GetValues(), text))
            ids.append(node.GetId());
    });
    return ids;
}

void StatementFindBar::Find(bool backward)
{
    const QStringList ids = Matches();
    if (ids.isEmpty())
        return;
    const StatementModel* model = view->Statements();
    const int here = view->currentIndex().data(StatementModel::LineRole).toInt();
    const auto lineOf = [model](const QString& id) {
        return model->IndexOf(id).data(StatementModel::LineRole).toInt();
    };
    QString target = backward ? ids.last() : ids.first(); // around the end
    if (!backward) {
        const auto next =
            std::find_if(ids.begin(), ids.end(), [&](const QString& id) { return lineOf(id) > here; });
        target = next != ids.end() ? *next : target;
    } else {
        const auto next =
            std::find_if(ids.rbegin(), ids.rend(), [&](const QString& id) { return lineOf(id) < here; });
        target = next != ids.rend() ? *next : target;
    }
    view->Select({target});
}
