// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CutTextDelegate_p.h"
#include "ShrinkPanel_p.h"

#include <QUndoStack>

class QStackedLayout;
class QTableView;
class RecordModel;
class WbLabel;

// Edits cells by a text field, or by a list where the model offers choices.
class RecordDelegate : public CutTextDelegate
{
    Q_OBJECT

public:
    using CutTextDelegate::CutTextDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // A cell too narrow for its icon and its text shows the icon alone.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

// A folding panel with a list of records: add, delete, move, edit in place, undo and redo.
class RecordPanel : public ShrinkPanel
{
    Q_OBJECT

public:
    // recordName: what one record is called ("工具"). emptyHint: what to do first.
    RecordPanel(const QString& title, const QString& recordName, const QString& emptyHint,
                QWidget* parent = nullptr);

    // Not owned; once.
    void SetModel(RecordModel* model);
    QUndoStack& GetUndoStack() { return undoStack; }
    int GetRecordCount() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool HandleKey(QKeyEvent* event);
    void Add();
    void RemoveSelected();
    void MoveCurrent(int by);
    void UpdateState();
    QVector<int> SelectedRows() const;

    QTableView* view;
    WbLabel* emptyLabel;
    QStackedLayout* stack;
    RecordModel* model = nullptr;
    QUndoStack undoStack;
    QToolButton* addButton;
    QToolButton* removeButton;
    QToolButton* upButton;
    QToolButton* downButton;
};
