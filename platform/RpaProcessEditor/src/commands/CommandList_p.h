// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <QVector>

// The commands of the catalogue as a flat list with a row per group; a search leaves the matching commands.
class CommandList : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        NameRole = Qt::UserRole, // empty for a group
        DescriptionRole,
        GroupRole,
    };

    explicit CommandList(QObject* parent = nullptr);

    // withGroups: rows of groups between the commands; a group can be folded.
    void Show(const QString& search, bool withGroups);
    void ToggleGroup(const QString& group);

    // What to say to a search that nothing fits; empty when something does.
    QString NothingFound() const;

    // -1 without a command.
    int FirstCommandRow() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

private:
    struct Row
    {
        QString group;
        QString name;
        QString title;
        QString description;
    };
    void Fill();
    void PutBestFirst();

    QVector<Row> rows;
    QStringList folded;
    QString search;
    bool grouped = true;
};

// Paints commands with their tile and groups as headings.
class CommandListDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The description is painted beside the title.
    bool wide = false;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
