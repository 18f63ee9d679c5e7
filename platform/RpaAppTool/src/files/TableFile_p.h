// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaTableData.h>

#include <QVariant>
#include <QVector>

#include <functional>

// Rows of a table in files: XLSX by the ending of the name, otherwise CSV. Any thread.
namespace TableFile
{
// Told how much is done, in thousandths; false ends the work.
using Progress = std::function<bool(int permille)>;

struct Content
{
    QVector<QVector<QVariant>> rows; // QString, double or QDate; invalid for an empty cell
    QString sheet;                   // of a workbook with several sheets: the one that was read
    QString problem;                 // why there are no rows, in the user's words
};

Content Read(const QString& path, const Progress& progress);

// Why the file was not written, in the user's words; empty when it was, and when progress ended the work.
// What was at the place before stays until all is written.
QString Write(const QString& path, const RpaTableData::Content& table, const Progress& progress);
} // namespace TableFile
