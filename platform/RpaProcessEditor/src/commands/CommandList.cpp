// SPDX-License-Identifier: Apache-2.0

#include "CommandList_p.h"
#include "CommandTexts_p.h"
#include "StatementModel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>
#include <WbFoundation/SearchText.h>

#include <QMimeData>
#include <QPainter>

CommandList::CommandList(QObject* parent) : QAbstractListModel(parent)
{
    Fill();
}

void CommandList::Show(const QString& text, bool withGroups)
{
    search = text.trimmed();
    grouped = withGroups;
    Fill();
}

void CommandList::ToggleGroup(const QString& group)
{
    if (!folded.removeOne(group))
        folded.append(group);
    Fill();
}

void CommandList::Fill()
{
    beginResetModel();
    rows.clear();
    const RpaCommandCatalogue* catalogue = RpaCommandCatalogue::Instance();
    const QStringList groups = catalogue->GetGroups();
    for (const QString& group : groups) {
        QVector<Row> commands;
        for (const RpaCommandInfo& info : catalogue->GetCommands())
            if (info.group == group && (search.isEmpty() || CommandTexts::Matches(info, search)))
                commands.append({group, info.name, info.title, info.description});
        if (commands.isEmpty())
            continue;
        if (grouped)
            rows.append({group, QString(), group, QString()});
        // A search shows what it found, folded or not.
        if (!grouped || !search.isEmpty() || !folded.contains(group))
            rows += commands;
    }
    if (!search.isEmpty() && !grouped)
        PutBestFirst();
    endResetModel();
}

// The very title is what the author means, then most often a title that begins with the words, as they stand
// or as they are read.
void CommandList::PutBestFirst()
{
    const auto isTitle = [this](const Row& row) {
        return row.title.compare(search, Qt::CaseInsensitive) == 0 ||
               row.name.compare(search, Qt::CaseInsensitive) == 0;
    };
    const auto begins = [this](const Row& row) {
        return row.title.startsWith(search, Qt::CaseInsensitive) ||
               row.name.startsWith(search, Qt::CaseInsensitive);
    };
    const auto isReadFirst = [this](const Row& row) { return SearchText::Find(row.title, search) == 0; };
    const auto isReadInside = [this](const Row& row) { return SearchText::Find(row.title, search) > 0; };
    std::stable_partition(rows.begin(), rows.end(), isReadInside);
    std::stable_partition(rows.begin(), rows.end(), isReadFirst);
    std::stable_partition(rows.begin(), rows.end(), begins);
    std::stable_partition(rows.begin(), rows.end(), isTitle);
}

QString CommandList::NothingFound() const
{
    return rows.isEmpty() ? QStringLiteral("没有找到“%1”。可以换个说法，也可以输入拼音或首字母").arg(search)
                          : QString();
}

int CommandList::FirstCommandRow() const
{
    for (int row = 0; row < rows.size(); ++row)
        if (!rows.at(row).name.isEmpty())
            return row;
    return -1;
}

int CommandList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows.size();
}

QVariant CommandList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Row& row = rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.title;
    case Qt::ToolTipRole:
        return row.name.isEmpty() ? QVariant() : row.description + QStringLiteral("\n双击或拖入流程");
    case Qt::AccessibleTextRole:
        return row.name.isEmpty() ? QStringLiteral("分组 ") + row.title
                                  : row.title + QLatin1Char(' ') + row.description;
    case NameRole:
        return row.name;
    case DescriptionRole:
        return row.description;
    case GroupRole:
        return row.group;
    default:
        return QVariant();
    }
}

Qt::ItemFlags CommandList::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const bool command = !rows.at(index.row()).name.isEmpty();
    return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren |
           (command ? Qt::ItemIsSelectable | Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

QStringList CommandList::mimeTypes() const
{
    return {StatementModel::CommandMime()};
}

QMimeData* CommandList::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto* mime = new QMimeData; // the caller owns it
    mime->setData(StatementModel::CommandMime(), indexes.first().data(NameRole).toString().toUtf8());
    return mime;
}

QSize CommandListDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return QSize(DpiTool::ScaleDefault(120), DpiTool::ScaleDefault(32));
}

void CommandListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    const WbTheme* theme = WbTheme::Instance();
    const QString name = index.data(CommandList::NameRole).toString();
    const auto scaled = [](int length) { return DpiTool::ScaleDefault(length); };
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRect rect = option.rect.adjusted(scaled(4), 1, -scaled(4), -1);
    if (name.isEmpty()) {
        QFont font = option.font;
        font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        painter->setPen(theme->Color(WbColor::TextSecondary));
        painter->drawText(rect.adjusted(scaled(4), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                          index.data().toString());
        painter->restore();
        return;
    }
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected || option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(theme->Color(selected ? WbColor::Selection : WbColor::Hover));
        painter->drawRoundedRect(rect, scaled(5), scaled(5));
    }
    const int tile = scaled(22);
    const QRect tileRect(rect.left() + scaled(6), rect.center().y() - tile / 2 + 1, tile, tile);
    CommandTexts::PaintTile(*painter, tileRect, name, true);
    rect.setLeft(tileRect.right() + scaled(8));
    painter->setFont(option.font);
    painter->setPen(theme->Color(WbColor::Text));
    const QFontMetrics metrics(option.font);
    const QString title = metrics.elidedText(index.data().toString(), Qt::ElideRight, rect.width());
    painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter, title);
    rect.setLeft(rect.left() + metrics.horizontalAdvance(title) + scaled(12));
    if (wide && rect.width() > scaled(40)) {
        painter->setPen(theme->Color(WbColor::TextSecondary));
        const QString description = index.data(CommandList::DescriptionRole).toString();
        painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter,
                          metrics.elidedText(description, Qt::ElideRight, rect.width() - scaled(6)));
    }
    painter->restore();
}
