// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"

#include <RpaProcessData/RpaCondition.h>

#include <QFrame>

class QComboBox;
class QLabel;
class QToolButton;
class ValueField;

// One comparison: value, comparison, value, and how it is joined to the row above.
class ConditionRowEdit : public QFrame
{
    Q_OBJECT

public:
    explicit ConditionRowEdit(const FieldOffers& offers, QWidget* parent = nullptr);

    void SetRow(const RpaConditionRow& row);
    RpaConditionRow Row() const;

    // Where it stands: the first row is joined to nothing, the only one cannot move.
    void SetPlace(int index, int count);
    void ShowMissing(bool shown);
    void FocusValue();

signals:
    void SigEdited();
    void SigFinished();
    void SigRemoveAsked();
    void SigAddAsked();
    // -1 up, 1 down
    void SigMoveAsked(int direction);

private:
    QWidget* BuildTop();
    void AddKeys();
    void ShowRight();

    QComboBox* join;
    QLabel* first;
    QToolButton* up;
    QToolButton* down;
    QToolButton* remove;
    ValueField* left;
    QComboBox* comparison;
    ValueField* right;
};
