// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_CheckPane.h"

#include <RpaProcessData/RpaCheckInfo.h>

#include <QTimer>
#include <QWidget>

// The findings of a check; a double click or Enter goes to the statement. Hidden while there is none.
class CheckPane : public QWidget
{
    Q_OBJECT

public:
    explicit CheckPane(QWidget* parent = nullptr);

    void ShowFindings(const QList<RpaCheckInfo>& findings);
    // Less than before: what the user has closed stays closed.
    void KeepFindings(const QList<RpaCheckInfo>& findings);

signals:
    void SigFindingChosen(const QString& processName, const QString& statementId);

private:
    void Fill(const QList<RpaCheckInfo>& findings);
    void SlotActivated(const QTreeWidgetItem* item);

    Ui::CheckPane ui;
    QTimer measuring; // the heights of the rows depend on the widths of the columns
};
