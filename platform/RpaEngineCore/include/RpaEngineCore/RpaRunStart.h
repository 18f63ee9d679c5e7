// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// A parameter of the page as a run found it.
struct RpaRunParameter
{
    QString name;
    QString text;          // the value as its author would read it
    bool isSecret = false; // a password: for comparing only, never to be shown or written
};

// What a run begins with.
struct RpaRunStart
{
    QString appId;
    QString environment; // "develop" in the editor, "gray" or "online" for users of a released version
    QString processName;
    QVector<RpaRunParameter> parameters; // in the order of the page
};
