// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

// Writes down what happened in which order, so that a test can compare the order as a whole.
//
//     OrderRecorder order;
//     order.Watch(&handle, &RpaAppEditorHandle::SigSaveFinished, QStringLiteral("finished"));
//     ...
//     QCOMPARE(order.GetEvents(), (QStringList{QStringLiteral("saved"), QStringLiteral("finished")}));
class OrderRecorder : public QObject
{
public:
    void Note(const QString& event) { events.append(event); }

    // Notes a signal each time it is emitted.
    template <typename Sender, typename Signal>
    void Watch(Sender* sender, Signal signal, const QString& name)
    {
        connect(sender, signal, this, [this, name] { Note(name); });
    }

    const QStringList& GetEvents() const { return events; }
    void Clear() { events.clear(); }

private:
    QStringList events;
};
