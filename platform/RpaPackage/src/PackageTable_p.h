// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/PackageService.h>

#include <QAbstractTableModel>

// The list as the user edits it.
class PackageTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Name,
        Version,
        State,
        ColumnCount,
    };

    explicit PackageTable(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    // Replaces everything.
    void SetStates(const QVector<PackageState>& states);
    // Takes over how the packages stand; rows that the service does not know stay as they are.
    void TakeStatus(const QVector<PackageState>& states);

    // JSON text of RpaPackageInfo.
    QString GetList() const;

    // Adds a package, or sets the version of one that is there. Returns its row; -1 with a problem for the
    // user.
    int Add(const QString& name, const QString& version, QString* problem);
    void Remove(int row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    // The user changed the list.
    void SigEdited();
    // A typed value cannot be taken.
    void SigRefused(const QString& problem);

private:
    int FindRow(const QString& name) const;
    void Touch(int row);

    QVector<PackageState> rows;
};
