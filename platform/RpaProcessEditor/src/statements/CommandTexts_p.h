// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaStatement.h>

#include <QString>

#include <functional>

class QPainter;
class QRect;
class RpaProcess;

// What authors read about commands and statements.
namespace CommandTexts
{
// The catalogue's title, or the bare name of a command that it does not know.
QString Title(const QString& command);

// The name of an element by its id; empty for one that is not known.
using ElementNames = std::function<QString(const QString& id)>;

// The command's one-line summary with the statement's arguments filled in. Places whose argument is empty
// read "…", an expression reads without its "=", an element goes by its name where that is known.
QString Summary(const RpaStatement& values, const ElementNames& elements = {});

// Whether the search words (separated by blanks) all occur in title, name, group, keywords or description, or
// are readings of title, group or a keyword.
bool Matches(const RpaCommandInfo& info, const QString& search);

// Variables that the process defines: outputs and variable arguments, sorted, each once.
QStringList Variables(const RpaProcess& process);

// Variables in which loops of a process hold the item that they are at.
QStringList LoopVariables(const RpaProcess& process);

// A statement of the command with its default arguments; an output name that the process already uses gets a
// number.
RpaStatement NewStatement(const RpaCommandInfo& info, const RpaProcess& process);

bool HasChildren(const QString& command);

// The tile that stands for the command in lists and on cards.
void PaintTile(QPainter& painter, const QRect& rect, const QString& command, bool enabled);
} // namespace CommandTexts
