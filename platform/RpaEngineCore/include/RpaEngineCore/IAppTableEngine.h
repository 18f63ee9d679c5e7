// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>

#include <QString>
#include <QStringList>
#include <QVariant>

// Table of the active UI page as a running process sees it. GUI thread. Rows and columns count from 0.
class RPAENGINECORE_EXPORT IAppTableEngine
{
public:
    virtual ~IAppTableEngine();

    // In their order; each name once.
    virtual QStringList GetColumnNames() const = 0;
    virtual int GetRowCount() const = 0;

    // Invalid outside the table.
    virtual QVariant GetCell(int row, int column) const = 0;

    // False outside the table or when the value does not fit the column.
    virtual bool SetCell(int row, int column, const QVariant& value) = 0;

    // Index of the new row, or -1 when a value does not fit.
    virtual int AppendRow(const QVariantList& values) = 0;

    // Columns stay.
    virtual void ClearRows() = 0;
};
