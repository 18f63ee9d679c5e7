// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

class QWidget;

// Every text that the tour's guest could read, to find those that a reader of Chinese without technical
// knowledge would stumble over. GUI thread.
class TourTexts
{
public:
    // Notes what all visible widgets say now: texts, hints, tool tips, rows in sight, menus.
    void Note(const QString& step);

    // What the guest typed is no text of the program.
    void NoteTyped(const QString& text) { typed += text; }

    // The noted texts with a Latin word that is neither a name that everybody uses nor typed by the guest, or
    // with a word that only programmers know; each with the step and the widget where it was seen first.
    QStringList FindForeign() const;

    int GetCount() const { return places.size(); }

private:
    void NoteWidget(const QWidget& widget, const QString& step);
    void Add(const QString& text, const QString& place);

    QMap<QString, QString> places; // by text
    QString typed;
};
