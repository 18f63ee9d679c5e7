// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaValue.h>

#include <QMetaType>
#include <QStringList>
#include <QStyledItemDelegate>

Q_DECLARE_METATYPE(RpaValue)

// Paints and edits one value in a grid.
class GridCell : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int valueRole = Qt::UserRole;

    GridCell(const QStringList& knownVariables, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private:
    const QStringList variables;
};
