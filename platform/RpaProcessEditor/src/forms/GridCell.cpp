// SPDX-License-Identifier: Apache-2.0

#include "GridCell_p.h"
#include "ValueChip_p.h"
#include "ValueEdit_p.h"
#include "ValueText_p.h"

#include <OxBase/DpiTool.h>

#include <QPainter>

GridCell::GridCell(const QStringList& knownVariables, QObject* parent)
    : QStyledItemDelegate(parent), variables(knownVariables)
{
}

void GridCell::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto value = index.data(valueRole).value<RpaValue>();
    if (!value.Is(RpaValuePart::Kind::Code)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem bare = option;
    initStyleOption(&bare, index);
    bare.text.clear();
    bare.widget->style()->drawControl(QStyle::CE_ItemViewItem, &bare, painter, bare.widget);
    const QString label = ValueText::Label(value.parts.first().text);
    const int width = option.fontMetrics.horizontalAdvance(label) + DpiTool::ScaleDefault(14);
    QRect chip = option.rect.adjusted(DpiTool::ScaleDefault(4), 0, -DpiTool::ScaleDefault(4), 0);
    chip.setWidth(qMin(chip.width(), width));
    chip.setHeight(qMin(chip.height(), option.fontMetrics.height() + 2));
    chip.moveTop(option.rect.center().y() - chip.height() / 2);
    painter->setFont(option.font);
    ValueChip::Paint(*painter, chip, label);
}

QWidget* GridCell::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    Q_UNUSED(option);
    Q_UNUSED(index);
    auto* edit = new ValueEdit(ValueEdit::Lines::One, parent);
    edit->setObjectName(QStringLiteral("cellEdit"));
    connect(edit, &ValueEdit::SigFinished, this, [this, edit] {
        auto* self = const_cast<GridCell*>(this);
        emit self->commitData(edit);
        emit self->closeEditor(edit);
    });
    return edit;
}

void GridCell::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* edit = static_cast<ValueEdit*>(editor);
    edit->SetParts(ValueText::Shown(index.data(valueRole).value<RpaValue>(), variables));
    edit->selectAll();
}

void GridCell::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto before = index.data(valueRole).value<RpaValue>();
    const QVector<RpaValuePart> parts = static_cast<ValueEdit*>(editor)->Parts();
    if (parts == ValueText::Shown(before, variables))
        return;
    RpaValue value = ValueText::Meant(parts, variables);
    value.isText = before.isText && value.Is(RpaValuePart::Kind::Code);
    model->setData(index, QVariant::fromValue(value), valueRole);
    model->setData(index, ValueText::Line(value, variables), Qt::DisplayRole);
}

void GridCell::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    Q_UNUSED(index);
    QRect place = option.rect;
    place.setHeight(editor->height());
    place.moveTop(option.rect.center().y() - place.height() / 2);
    editor->setGeometry(place);
}
