// SPDX-License-Identifier: Apache-2.0

#include "PlaceList_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

void PlaceModel::SetPlaces(const QVector<ShownPlace>& shown)
{
    beginResetModel();
    places = shown;
    endResetModel();
}

int PlaceModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : places.size();
}

QVariant PlaceModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return QVariant();
    const ShownPlace& place = places.at(index.row());
    const QString texts[] = {place.processName, place.line > 0 ? QString::number(place.line) : QString(),
                             place.statement,   place.part,
                             place.before,      place.after};
    const QString& text = texts[index.column()];
    return role == Qt::DisplayRole ? text : UIUtils::PlainToolTip(text);
}

QVariant PlaceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QString titles[] = {QStringLiteral("流程"), QStringLiteral("行"),   QStringLiteral("语句"),
                              QStringLiteral("位置"), QStringLiteral("现在"), QStringLiteral("修改后")};
    return titles[section];
}

PlaceList::PlaceList(QWidget* parent) : QTreeView(parent), model(new PlaceModel(this))
{
    setModel(model);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    header()->setSectionResizeMode(PlaceModel::BeforeColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(PlaceModel::AfterColumn, QHeaderView::Stretch);
    const int widths[] = {110, 56, 120, 100};
    for (int column = 0; column < int(std::size(widths)); ++column)
        setColumnWidth(column, DpiTool::ScaleDefault(widths[column]));
    connect(this, &QTreeView::doubleClicked, this, &PlaceList::Choose);
}

void PlaceList::SetPlaces(const QVector<ShownPlace>& places)
{
    const QScopedValueRollback<bool> guard(filling, true);
    const int row = currentIndex().row();
    model->SetPlaces(places);
    if (row >= 0 && !places.isEmpty())
        selectionModel()->setCurrentIndex(model->index(qMin(row, places.size() - 1), 0),
                                          QItemSelectionModel::NoUpdate);
    emit SigSelectionChanged();
}

QVector<int> PlaceList::SelectedRows() const
{
    QVector<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void PlaceList::Step(bool backward)
{
    const int count = model->rowCount();
    if (count == 0)
        return;
    const int row = currentIndex().row();
    const int next = row < 0 ? (backward ? count - 1 : 0) : (row + (backward ? count - 1 : 1)) % count;
    setCurrentIndex(model->index(next, 0));
}

void PlaceList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Choose(currentIndex());
    else
        QTreeView::keyPressEvent(event);
}

void PlaceList::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    if (current.isValid() && !filling)
        emit SigShown(model->At(current.row()).processName, model->At(current.row()).statementId);
}

void PlaceList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    emit SigSelectionChanged();
}

void PlaceList::Choose(const QModelIndex& index)
{
    if (index.isValid())
        emit SigChosen(model->At(index.row()).processName, model->At(index.row()).statementId);
}
