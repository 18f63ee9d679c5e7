// SPDX-License-Identifier: Apache-2.0

#include "RichLimits_p.h"
#include "RichTally_p.h"

void RichTally::Refuse(const QString& reason)
{
    if (problem.isEmpty())
        problem = reason;
}

void RichTally::AddTag()
{
    ++paragraphTags;
    if (++tags > RichLimits::tags)
        Refuse(QStringLiteral("的格式标记超过 %1 个").arg(RichLimits::tags));
    if (paragraphTags > RichLimits::paragraphTags)
        Refuse(QStringLiteral("有一段的格式标记超过 %1 个").arg(RichLimits::paragraphTags));
}

void RichTally::AddText(int size)
{
    paragraphSize += size;
    textSize += size;
    if (textSize > RichLimits::textSize)
        Refuse(QStringLiteral("的文字超过 %1 万字").arg(RichLimits::textSize / 10000));
    if (paragraphSize > RichLimits::paragraphSize)
        Refuse(QStringLiteral("有一段超过 %1 字").arg(RichLimits::paragraphSize));
}

void RichTally::BeginParagraph()
{
    EndParagraph();
    if (++paragraphs > RichLimits::paragraphs)
        Refuse(QStringLiteral("的段落超过 %1 个").arg(RichLimits::paragraphs));
}

void RichTally::EndParagraph()
{
    longestParagraph = qMax(longestParagraph, paragraphSize);
    AddWork(qint64(paragraphSize) * paragraphSize +
            RichLimits::workPerTagSquared * paragraphTags * paragraphTags);
    paragraphSize = 0;
    paragraphTags = 0;
}

void RichTally::AddWork(qint64 more)
{
    work += more;
    if (work > RichLimits::layoutWork)
        Refuse(QStringLiteral("的长段落和长列表太多"));
}

void RichTally::EndList()
{
    if (lists.isEmpty())
        return;
    const qint64 items = lists.takeLast();
    AddWork(RichLimits::workPerItemSquared * items * items);
}

void RichTally::AddListItem()
{
    int& items = lists.isEmpty() ? looseItems : lists.last();
    longestList = qMax(longestList, ++items);
    if (items > RichLimits::listItems)
        Refuse(QStringLiteral("有一个列表超过 %1 项").arg(RichLimits::listItems));
}

void RichTally::EndTable()
{
    if (!tables.isEmpty())
        tables.removeLast();
}

void RichTally::BeginRow()
{
    if (tables.isEmpty())
        return;
    Table& table = tables.last();
    for (int& rows : table.taken)
        rows = qMax(0, rows - 1);
    table.column = 0;
    ++table.rows;
    AddCells(table.taken.size());
}

// A table in a table is laid out several times to find its place.
void RichTally::AddCells(int count)
{
    cells += count * (2 * tables.size() - 1);
    if (cells > RichLimits::cells)
        Refuse(QStringLiteral("的表格太大，单元格超过 %1 个").arg(RichLimits::cells));
}

void RichTally::AddCell(int columnSpan, int rowSpan)
{
    if (tables.isEmpty())
        return;
    Table& table = tables.last();
    while (table.column < table.taken.size() && table.taken.at(table.column) > 0)
        ++table.column;
    for (int i = 0; i < columnSpan; ++i, ++table.column) {
        if (table.column >= table.taken.size()) {
            table.taken.append(0);
            AddCells(table.rows); // a column more in every row there is
        }
        table.taken[table.column] = rowSpan;
    }
    if (table.taken.size() > RichLimits::columns)
        Refuse(QStringLiteral("有一个表格超过 %1 列").arg(RichLimits::columns));
}
