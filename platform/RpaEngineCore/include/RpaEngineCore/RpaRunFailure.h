// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunSpan.h>

#include <QMetaType>
#include <QString>
#include <QVector>

// A variable as its author reads it; a password is never in its text.
struct RpaRunVariable
{
    QString name;
    QString type; // Python's name of it
    QString text; // short
};

// Variables that belong together, such as "局部变量" or "界面参数".
struct RpaRunScope
{
    QString title;
    QVector<RpaRunVariable> variables; // at most 200
};

struct RpaRunFrame
{
    QString functionName; // of a program text; its top level has "<module>"
    RpaRunPlace place;
};

// A program at the moment at which it failed; plain record, any thread.
struct RpaRunFailure
{
    QVector<RpaRunFrame> stack; // the innermost first; at most 50
    QVector<RpaRunScope> scopes;

    bool IsEmpty() const { return stack.isEmpty() && scopes.isEmpty(); }
};

Q_DECLARE_METATYPE(RpaRunFailure)
