// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"

#include <QAbstractListModel>

// The apps that the signed-in account may edit, in the server's order.
class AppListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        IdRole = Qt::UserRole,
        KindRole,
        KindNameRole,
        CreatorNameRole,
        OwnRole,
        ChangedRole, // as text, in the language of dates
        ChangedByRole,
        StateRole,
        StateNameRole, // empty when it is not told
        TagsRole,
    };

    // Replaces the list.
    void SetApps(const QVector<AppRecord>& apps);

    // Whose apps count as own.
    void SetAccount(const QString& pin);

    void SetDateLanguage(DateLanguage language);

    // Of all apps, each once.
    QStringList GetTags() const;

    // Default-constructed when the row is out of range.
    AppRecord AppAt(int row) const;

    // -1 when there is none.
    int RowOf(const QString& appId) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QString AccessibleText(const QModelIndex& row) const;

    QVector<AppRecord> records;
    QString account;
    DateLanguage dateLanguage = DateLanguage::System;
};
