// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "StatementModel_p.h"

#include <QTreeView>

// The tree of statement cards: keys, mouse, clipboard, drag and drop. Every act goes to ProcessEdits.
class StatementView : public QTreeView
{
    Q_OBJECT

public:
    explicit StatementView(QWidget* parent = nullptr);

    StatementModel* Statements() const { return statements; }

    // edits must outlive its use here; null shows nothing.
    void ShowProcess(ProcessEdits* processEdits, RpaProcess* process);

    QStringList SelectedIds() const;
    void Select(const QStringList& ids);
    // Scrolls to it and opens what it is in; the selection stays.
    void Reveal(const QString& id);
    // Id of the statement whose breakpoint stands there; empty elsewhere.
    QString MarkAt(const QPoint& position) const;

    // Adds a statement of the command where the author is: behind the current one, or inside an opened block.
    void InsertCommand(const QString& command);

    void Copy() const;
    void Cut();
    void Paste();
    void Delete();
    void Duplicate();
    void ToggleEnabled();
    void MoveUp() { Step(-1); }
    void MoveDown() { Step(1); }

signals:
    void SigSelectionChanged();
    void SigQuickPickAsked();
    void SigPropertiesAsked();
    // Somebody pressed where its breakpoint stands.
    void SigMarkPressed(const QString& id);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

private:
    struct Place
    {
        QString parentId;
        int row;
    };
    Place PlaceFor(const QString& command) const;
    // What the keyboard goes on with once these are gone: the statement below them, else that above; may be
    // empty.
    QString NextAfter(const QStringList& removed) const;
    void RemoveSelected(const QString& step);
    const RpaStatementNode* CurrentNode() const;
    void Step(int direction);
    void FitGutter();

    StatementModel* statements;
    ProcessEdits* edits = nullptr;
    bool pressesMark = false; // until the button is let go
};
