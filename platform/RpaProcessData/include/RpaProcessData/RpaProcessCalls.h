// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatementChange.h>

#include <QVector>

class ProcessDataManager;

// Statements that run a process of the app by its name, disabled ones included. GUI thread only.
namespace RpaProcessCalls
{
// What becomes of them, in the order of the app, when the process gets another name. Changes nothing.
RPAPROCESSDATA_EXPORT QVector<RpaStatementChange> Renamed(const ProcessDataManager& manager,
                                                          const QString& name, const QString& newName);
} // namespace RpaProcessCalls
