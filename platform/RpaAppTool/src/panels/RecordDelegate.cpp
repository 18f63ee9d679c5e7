// SPDX-License-Identifier: Apache-2.0

#include "RecordDelegate_p.h"
#include "RecordModel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbIcons.h>

#include <QComboBox>

namespace
{

const RecordModel* RecordModelOf(const QModelIndex& index)
{
    return qobject_cast<const RecordModel*>(index.model());
}

void ShowIn(QComboBox& combo, const QVariant& value)
{
    combo.setCurrentIndex(combo.findData(value));
    if (combo.isEditable())
        combo.setEditText(value.toString());
}

// A text that was typed counts as it stands, unless it is the title of a row.
QVariant PickedIn(const QComboBox& combo)
{
    if (!combo.isEditable())
        return combo.currentData();
    const int row = combo.findText(combo.currentText());
    return row < 0 ? QVariant(combo.currentText()) : combo.itemData(row);
}

} // namespace

QWidget* RecordDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const QVector<RecordModel::Choice> choices = RecordModelOf(index)->GetChoices(index);
    if (choices.isEmpty())
        return CutTextDelegate::createEditor(parent, option, index);
    const bool takesText = RecordModelOf(index)->TakesOtherText(index);
    WbComboBox* const combo = takesText ? new WbEditableCombo(parent) : new WbComboBox(parent);
    for (const RecordModel::Choice& choice : choices)
        combo->addItem(choice.icon.isEmpty() ? QIcon() : WbIcons::Get(choice.icon), choice.title,
                       choice.value);
    // One click picks: nobody wants to confirm a choice by leaving the cell.
    auto* self = const_cast<RecordDelegate*>(this);
    connect(combo, qOverload<int>(&QComboBox::activated), self, [self, combo] {
        emit self->commitData(combo);
        emit self->closeEditor(combo);
    });
    return combo;
}

void RecordDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor))
        ShowIn(*combo, index.data(Qt::EditRole));
    else
        CutTextDelegate::setEditorData(editor, index);
}

void RecordDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor))
        model->setData(index, PickedIn(*combo));
    else
        CutTextDelegate::setModelData(editor, model, index);
}

// The text's place, where an editor stands by default, may be next to nothing beside an icon.
void RecordDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const
{
    if (!qobject_cast<QComboBox*>(editor)) {
        CutTextDelegate::updateEditorGeometry(editor, option, index);
        return;
    }
    QRect place = option.rect;
    place.setWidth(qMax(place.width(), editor->sizeHint().width()));
    place.moveRight(qMin(place.right(), editor->parentWidget()->rect().right()));
    editor->setGeometry(place);
}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize hint = CutTextDelegate::sizeHint(option, index);
    return {hint.width(), qMax(hint.height(), DpiTool::ScaleDefault(30))};
}

void RecordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const bool cut = option.rect.width() < sizeHint(option, index).width();
    if (!cut || index.data(Qt::DecorationRole).isNull()) {
        CutTextDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem iconOnly = option;
    initStyleOption(&iconOnly, index);
    iconOnly.features &= ~QStyleOptionViewItem::HasDisplay;
    iconOnly.text.clear();
    iconOnly.widget->style()->drawControl(QStyle::CE_ItemViewItem, &iconOnly, painter, iconOnly.widget);
}
