// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPointer>
#include <QUndoCommand>

// One act of the author on a list of records: all of its data before and after it. Columns take their cells
// along, and every record keeps the id that it was given.
template <class Data>
class RecordCommand : public QUndoCommand
{
public:
    // The act has been done already.
    RecordCommand(const QString& text, Data* changed, const typename Data::Content& contentBefore)
        : QUndoCommand(text), data(changed), before(contentBefore), after(changed->GetContent())
    {
    }

    void undo() override
    {
        if (data)
            data->SetContent(before);
    }
    void redo() override
    {
        if (data && isUndone)
            data->SetContent(after);
        isUndone = true;
    }

private:
    const QPointer<Data> data;
    const typename Data::Content before;
    const typename Data::Content after;
    bool isUndone = false; // the stack calls redo() when it takes the command over
};
