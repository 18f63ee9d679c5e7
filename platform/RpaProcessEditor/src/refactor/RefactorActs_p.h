// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProcessEdits_p.h"

#include <QPointer>

class QAction;
class QKeySequence;
class QMenu;
class StatementView;

// The acts of the tree that give statements another shape: blocks around them, processes of their own, folded
// and unfolded blocks.
// What cannot be done is said in a toast.
class RefactorActs : public QObject
{
    Q_OBJECT

public:
    explicit RefactorActs(StatementView* statementView);

    // Null when no app is shown.
    void SetEdits(ProcessEdits* processEdits) { edits = processEdits; }

    // For the menu of the tree, which owns it.
    QMenu* MakeMenu(QWidget* parent) const;

    // After another selection.
    void Update();

private:
    using Act = void (RefactorActs::*)();

    void AddWrap(const QString& command, int key);
    QAction* Add(const QString& name, const QString& text, int key);
    QAction* AddAct(const QString& name, const QString& text, int key, Act act);
    QAction* AddOnSelection(const QString& name, const QString& text, int key, Act act);
    void Wrap(const QString& command);
    void Unwrap();
    void Extract();
    void Inline();
    void FoldAll();
    void UnfoldAll();
    static void Say(const QString& problem);

    StatementView* const view;
    QPointer<ProcessEdits> edits;
    QList<QAction*> actions; // null: a line between groups
    QList<QAction*> onSelection;
};
