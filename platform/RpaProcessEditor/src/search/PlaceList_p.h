// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractTableModel>
#include <QTreeView>
#include <QVector>

// A place in the statements of an app, as an author reads it.
struct ShownPlace
{
    QString processName;
    QString statementId;
    int line = 0; // of the statement, from 1
    QString statement;
    QString part; // which argument, result or note; empty where the whole statement is meant
    QString before;
    QString after;
};

class PlaceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        ProcessColumn,
        LineColumn,
        StatementColumn,
        PartColumn,
        BeforeColumn,
        AfterColumn,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    void SetPlaces(const QVector<ShownPlace>& shown);
    const ShownPlace& At(int row) const { return places.at(row); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& = QModelIndex()) const override { return ColumnCount; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<ShownPlace> places;
};

// Places one below the other: what stands there and what would stand there.
class PlaceList : public QTreeView
{
    Q_OBJECT

public:
    explicit PlaceList(QWidget* parent = nullptr);

    // The current row stays where it was, as far as it is there.
    void SetPlaces(const QVector<ShownPlace>& places);
    void ShowAfter(bool shown) { setColumnHidden(PlaceModel::AfterColumn, !shown); }
    // Where every place is a whole statement.
    void HidePart() { setColumnHidden(PlaceModel::PartColumn, true); }

    // In ascending order.
    QVector<int> SelectedRows() const;
    // To the next or the previous place, around the end.
    void Step(bool backward);

signals:
    // A place became the current one; the author wants to go there.
    void SigShown(const QString& processName, const QString& statementId);
    void SigChosen(const QString& processName, const QString& statementId);
    void SigSelectionChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void Choose(const QModelIndex& index);

    PlaceModel* const model;
    bool filling = false;
};
