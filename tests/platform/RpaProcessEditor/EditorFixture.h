// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaStatement.h>

#include <QString>
#include <QStringList>

class QWidget;

// Apps and commands for tests of the process editors.
namespace EditorFixture
{
// Adds commands of its own to the catalogue, so that tests do not depend on the product's:
//   t-log (text, required; level choice), t-if and t-else (block and branch), t-read (file; output
//   "content"), t-call (process), t-set (variable, expression), t-wait (number)
void AddCommands();

RpaStatement Statement(const QString& command, const QString& id = QString(),
                       const QVector<RpaStatement>& children = {});

// A "t-log" that prints its id.
RpaStatement Log(const QString& id);

// "a b(c d) e": logs, and a block with a condition.
QVector<RpaStatement> SomeStatements();

// An app with the processes "主流程" and "子流程"; the main one holds the statements.
RpaAppDataPtr App(const QVector<RpaStatement>& statements = {});

RpaProcess* Main(const RpaAppDataPtr& app);

// Types a text as an author does: keys, and an input method for what no key gives.
void Type(QWidget* target, const QString& text);

// The ids of a process in outline: "a b(c d) e".
QString Outline(const RpaProcess& process);
} // namespace EditorFixture
