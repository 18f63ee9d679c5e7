// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"
#include "FormEditor_p.h"

#include <RpaProcessData/RpaCondition.h>

class ConditionRowEdit;
class QToolButton;
class QVBoxLayout;

// A condition as rows that are added, removed and moved by mouse and by keys: Ctrl+Enter, Ctrl+Delete,
// Alt+Up, Alt+Down.
class ConditionRows : public FormEditor
{
    Q_OBJECT

public:
    explicit ConditionRows(const FieldOffers& fieldOffers, QWidget* parent = nullptr);

    void Show(const QString& python) override;
    QList<QWidget*> TabStops() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void Fill(const QVector<RpaConditionRow>& rows);
    ConditionRowEdit* MakeRow();
    QVector<RpaConditionRow> Rows() const;
    void Change(const QVector<RpaConditionRow>& rows, int focused);
    void Tell();
    void Add(int index);
    void Remove(int index);
    void Move(int index, int direction);

    const FieldOffers offers;
    RpaCondition condition;
    QVector<ConditionRowEdit*> edits;
    QVBoxLayout* list;
    QToolButton* add;
};
