// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "ui_BreakpointsPane.h"

#include <QWidget>

// All breakpoints of the app: a tick enables, Enter or a double click goes there, F2 asks for its terms.
class BreakpointsPane : public QWidget
{
    Q_OBJECT

public:
    explicit BreakpointsPane(QWidget* parent = nullptr);

    void SetBreakpoints(const QSharedPointer<AppBreakpoints>& list);

signals:
    void SigPlaceChosen(const RpaDebugPlace& place);

private:
    void AddAct(const QString& name, const QString& text, int key, void (BreakpointsPane::*act)());
    void Fill();
    QTreeWidgetItem* MakeItem(const RpaBreakpoint& point) const;
    QString StatementText(const RpaDebugPlace& place) const;
    RpaDebugPlace PlaceOf(const QTreeWidgetItem* item) const;
    void SlotTicked(const QTreeWidgetItem* item);
    void Edit();
    void Remove();
    void RemoveAll();

    QSharedPointer<AppBreakpoints> breakpoints;
    QVector<RpaBreakpoint> shown; // row by row
    Ui::BreakpointsPane ui;
};
