// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CutTextDelegate_p.h"

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
