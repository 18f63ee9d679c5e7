// SPDX-License-Identifier: Apache-2.0

#include "ConditionRowEdit_p.h"
#include "ConditionRows_p.h"

#include <WbBaseUI/WbIcons.h>

#include <QToolButton>
#include <QVBoxLayout>

ConditionRows::ConditionRows(const FieldOffers& fieldOffers, QWidget* parent)
    : FormEditor(parent), offers(fieldOffers), list(new QVBoxLayout), add(new QToolButton)
{
    list->setSpacing(10);
    add->setObjectName(QStringLiteral("addRow"));
    add->setText(QStringLiteral("添加条件"));
    add->setIcon(WbIcons::Get(QStringLiteral("add")));
    add->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    add->setAutoRaise(true);
    add->setToolTip(QStringLiteral("添加一行（Ctrl+Enter）"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(list);
    layout->addWidget(add, 0, Qt::AlignLeft);
    connect(add, &QToolButton::clicked, this, [this] { Add(edits.size()); });
}

void ConditionRows::Show(const QString& python)
{
    condition = RpaCondition::Read(python).value_or(RpaCondition());
    Fill(condition.GetRows());
}

void ConditionRows::focusInEvent(QFocusEvent* event)
{
    FormEditor::focusInEvent(event);
    if (!edits.isEmpty())
        edits.first()->FocusValue();
}

QList<QWidget*> ConditionRows::TabStops() const
{
    QList<QWidget*> stops;
    for (const ConditionRowEdit* edit : edits)
        stops += StopsIn(edit);
    return stops << add;
}

ConditionRowEdit* ConditionRows::MakeRow()
{
    auto* edit = new ConditionRowEdit(offers);
    connect(edit, &ConditionRowEdit::SigEdited, this, &ConditionRows::Tell);
    connect(edit, &ConditionRowEdit::SigFinished, this, &ConditionRows::SigFinished);
    connect(edit, &ConditionRowEdit::SigAddAsked, this, [this, edit] { Add(edits.indexOf(edit) + 1); });
    connect(edit, &ConditionRowEdit::SigRemoveAsked, this, [this, edit] { Remove(edits.indexOf(edit)); });
    connect(edit, &ConditionRowEdit::SigMoveAsked, this,
            [this, edit](int direction) { Move(edits.indexOf(edit), direction); });
    list->addWidget(edit);
    edit->show(); // now, so that it can take the keyboard
    return edit;
}

void ConditionRows::Fill(const QVector<RpaConditionRow>& rows)
{
    while (edits.size() > rows.size()) {
        ConditionRowEdit* gone = edits.takeLast();
        gone->hide();
        gone->disconnect(this);
        gone->deleteLater(); // its own button may have brought us here
    }
    while (edits.size() < rows.size())
        edits.append(MakeRow());
    for (int i = 0; i < rows.size(); ++i) {
        edits.at(i)->SetRow(rows.at(i));
        edits.at(i)->SetPlace(i, rows.size());
        edits.at(i)->ShowMissing(rows.size() > 1);
    }
}

QVector<RpaConditionRow> ConditionRows::Rows() const
{
    QVector<RpaConditionRow> rows;
    for (const ConditionRowEdit* edit : edits)
        rows.append(edit->Row());
    return rows;
}

void ConditionRows::Tell()
{
    const QVector<RpaConditionRow> rows = Rows();
    condition.SetRows(rows);
    const bool nothing = rows.size() == 1 && rows.first().left.IsEmpty() && rows.first().right.IsEmpty();
    for (ConditionRowEdit* edit : qAsConst(edits))
        edit->ShowMissing(!nothing);
    emit SigEdited(nothing ? QString() : condition.ToPython());
}

// An act of its own: one step to undo.
void ConditionRows::Change(const QVector<RpaConditionRow>& rows, int focused)
{
    emit SigFinished();
    Fill(rows);
    edits.at(focused)->FocusValue();
    Tell();
    emit SigFinished();
}

void ConditionRows::Add(int index)
{
    QVector<RpaConditionRow> rows = Rows();
    RpaConditionRow added;
    added.isOr = rows.value(index - 1).isOr;
    rows.insert(index, added);
    Change(rows, index);
}

void ConditionRows::Remove(int index)
{
    QVector<RpaConditionRow> rows = Rows();
    rows.removeAt(index);
    if (rows.isEmpty())
        rows.append(RpaConditionRow());
    rows.first().isOr = false;
    Change(rows, qMin(index, rows.size() - 1));
}

// Rows change places; how the places are joined stays.
void ConditionRows::Move(int index, int direction)
{
    QVector<RpaConditionRow> rows = Rows();
    const int other = index + direction;
    if (other < 0 || other >= rows.size())
        return;
    std::swap(rows[index], rows[other]);
    std::swap(rows[index].isOr, rows[other].isOr);
    Change(rows, other);
}
