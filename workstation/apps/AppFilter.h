// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSortFilterProxyModel>

// The apps that are looked for, by a part of their name or of a tag, or by a whole tag: "#财务".
class AppFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    // Whether the text asks for a whole tag.
    static bool IsTag(const QString& text) { return text.startsWith(QLatin1Char('#')); }

    void SetWanted(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QString wanted;
};
