// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPointer>
#include <QUndoCommand>
#include <QUndoStack>
#include <QVector>

#include <functional>

// One act of the author on a short list: the list before and after it.
template <typename Data, typename Item>
class ListCommand : public QUndoCommand
{
public:
    ListCommand(const QString& text, Data* changed, const QVector<Item>& itemsBefore,
                const QVector<Item>& itemsAfter)
        : QUndoCommand(text), data(changed), before(itemsBefore), after(itemsAfter)
    {
    }

    void undo() override
    {
        if (data)
            data->SetContent(before);
    }
    void redo() override
    {
        if (!data)
            return;
        data->SetContent(after);
        after = data->GetItems(); // with the ids that new items were given
    }

private:
    const QPointer<Data> data;
    const QVector<Item> before;
    QVector<Item> after;
};

// The acts that lists have in common, as values.
namespace ListActs
{

template <typename Item>
QVector<Item> Without(QVector<Item> items, const QVector<int>& rows)
{
    for (int i = rows.size() - 1; i >= 0; --i)
        items.remove(rows.at(i));
    return items;
}

template <typename Item>
QVector<Item> Moved(QVector<Item> items, int from, int to)
{
    items.move(from, to);
    return items;
}

} // namespace ListActs
