// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

// What a run touched outside of itself.
enum class RpaSpanKind
{
    Position = 0, // nothing: the program was seen at this place
    File = 1,
    Excel = 2,
    Http = 3,
    Browser = 4,
    Dialog = 5,
    Mail = 6,
    Database = 7,
    Program = 8,
};

// Where in the app; plain record, any thread.
struct RpaRunPlace
{
    QString processName;
    QString statementId; // empty in a program text
    int line = 0;        // number of the statement in its process, or line of the text, from 1; 0: unknown
    QString title{};     // what stands there: the command's title, or the line of the text; may be empty

    // Whether it is the same place; titles do not count.
    bool operator==(const RpaRunPlace& other) const
    {
        return line == other.line && statementId == other.statementId && processName == other.processName;
    }
};

// One call of the outside. Texts are short, and without what looks like a password.
struct RpaRunSpan
{
    RpaSpanKind kind = RpaSpanKind::Position;
    qint64 start = 0;    // microseconds since the program began
    qint64 duration = 0; // microseconds
    RpaRunPlace place;
    QString call;   // the Python function
    QString input;  // what tells this call from another: a path, an address, a command
    QString result; // empty when it failed or gave nothing that can be shown
    QString error;  // empty when it went well
};

// Calls of one place that are too many to be kept each, added up.
struct RpaRunSpanSum
{
    RpaSpanKind kind = RpaSpanKind::Position;
    RpaRunPlace place;
    qint64 count = 0;
    qint64 total = 0;   // microseconds
    qint64 longest = 0; // microseconds
    qint64 failures = 0;
};

// The newest calls each, in the order in which they ended, and sums of those before them.
struct RpaRunSpans
{
    QVector<RpaRunSpan> spans;
    QVector<RpaRunSpanSum> sums;

    bool IsEmpty() const { return spans.isEmpty() && sums.isEmpty(); }
};

Q_DECLARE_METATYPE(RpaRunSpans)
