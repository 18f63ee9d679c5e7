// SPDX-License-Identifier: Apache-2.0

#include "ValueModel_p.h"
#include "ValueView_p.h"

#include <OxBase/DpiTool.h>

#include <QHeaderView>
#include <QKeyEvent>

ValueView::ValueView(QWidget* parent) : QTreeView(parent)
{
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setExpandsOnDoubleClick(false);
    setAllColumnsShowFocus(true);
    setTextElideMode(Qt::ElideRight);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { opened.insert(PathOf(index)); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { opened.remove(PathOf(index)); });
    connect(this, &QAbstractItemView::clicked, this, &ValueView::Activate);
}

void ValueView::OpenAtFirst(const QString& name)
{
    opened.insert(name);
}

void ValueView::setModel(QAbstractItemModel* shown)
{
    QTreeView::setModel(shown);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(ValueModel::ValueColumn, QHeaderView::Stretch);
    header()->resizeSection(ValueModel::NameColumn, DpiTool::ScaleDefault(180));
    header()->resizeSection(ValueModel::TypeColumn, DpiTool::ScaleDefault(90));
    header()->resizeSection(ValueModel::SizeColumn, DpiTool::ScaleDefault(70));
}

QString ValueView::PathOf(const QModelIndex& index)
{
    QString path;
    for (QModelIndex each = index.siblingAtColumn(0); each.isValid(); each = each.parent())
        path.prepend(each.data().toString() + (path.isEmpty() ? QString() : QString(QLatin1Char('\n'))));
    return path;
}

void ValueView::reset()
{
    QTreeView::reset();
    if (model() && model()->rowCount() > 0)
        OpenAgain(QModelIndex(), 0, model()->rowCount() - 1);
}

void ValueView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    OpenAgain(parent, start, end);
}

void ValueView::OpenAgain(const QModelIndex& parent, int first, int last)
{
    if (opened.isEmpty())
        return;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = model()->index(row, 0, parent);
        if (!model()->hasChildren(index) || !opened.contains(PathOf(index)))
            continue;
        expand(index);
        if (model()->canFetchMore(index)) // a view that is not shown does not lay out
            model()->fetchMore(index);
    }
}

void ValueView::Activate(const QModelIndex& index)
{
    if (index.siblingAtColumn(0).data(ValueModel::MoreRole).toBool())
        emit SigMoreAsked(index);
}

void ValueView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && currentIndex().isValid() && state() != EditingState) {
        if (currentIndex().siblingAtColumn(0).data(ValueModel::MoreRole).toBool())
            Activate(currentIndex());
        else
            edit(currentIndex().siblingAtColumn(ValueModel::ValueColumn), EditKeyPressed, event);
        return;
    }
    QTreeView::keyPressEvent(event);
}
