// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QByteArray>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVector>

// A statement with everything below it, as a value: what is copied, pasted, dragged and kept by undo steps.
struct RPAPROCESSDATA_EXPORT RpaStatement
{
    QString id;                       // stable; empty in a statement that is not yet part of a process
    QString command;                  // name of the command in the catalogue
    QMap<QString, QString> arguments; // argument name -> text, see RpaExpression for its meaning
    QString output;                   // variable that receives the result; empty for none
    QString note;                     // the author's remark
    bool enabled = true;              // false: commented out, together with its children
    bool breakpoint = false;
    QVector<RpaStatement> children; // of a block
    QByteArray unknown;             // members written by a newer client, kept as they came

    // Same content, children included.
    bool operator==(const RpaStatement& other) const;
    bool operator!=(const RpaStatement& other) const { return !(*this == other); }

    // JSON text of a list of statements and back, for the clipboard; an unreadable text gives an empty list.
    static QByteArray ToJson(const QVector<RpaStatement>& statements);
    static QVector<RpaStatement> FromJson(const QByteArray& json);
};

Q_DECLARE_METATYPE(RpaStatement)
