// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProcessEdits_p.h"

#include <QPointer>
#include <QWidget>

class QToolButton;
class WbTabBar;

// The processes of the app as tabs, the main process first: add, rename, delete, move.
class ProcessTabs : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessTabs(QWidget* parent = nullptr);

    // Null shows none.
    void SetEdits(ProcessEdits* processEdits);

    // Empty without processes.
    QString Current() const;
    void SetCurrent(const QString& name) { Refill(name); }

    void AskAdd();
    void AskRename(int index);
    void AskRemove(int index);

signals:
    void SigCurrentChanged(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refill(const QString& current);
    void SlotMoved(int from, int to);
    void ShowMenu(const QPoint& position);
    QString AskName(const QString& title, const QString& proposal, const QStringList& taken,
                    bool renames = false);
    QString NameAt(int index) const;

    QPointer<ProcessEdits> edits;
    WbTabBar* bar;
    QToolButton* addButton;
    QString announced;
    bool refilling = false;
};
