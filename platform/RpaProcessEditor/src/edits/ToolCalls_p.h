// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>

#include <QString>
#include <QVector>

// A tool of a page that runs a process.
struct ToolCall
{
    QString pageName;
    QString toolId;
    QString text;
};

namespace ToolCalls
{
QVector<ToolCall> Of(const RpaAppData& app, const QString& processName);

// Lets those that run the one process run the other.
void Direct(RpaAppData& app, const QVector<ToolCall>& calls, const QString& from, const QString& to);
} // namespace ToolCalls
