// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableFile_p.h"

class QIODevice;

// A workbook of one sheet with the table's names in its first row. Any thread.
namespace XlsxWriter
{
// Why it was not written; empty as well when progress ended the work.
QString Write(QIODevice& file, const RpaTableData::Content& table, const TableFile::Progress& progress);

// As texts of the format: XML, with what XML has no place for as "_x0007_".
QString Escaped(const QString& text);
} // namespace XlsxWriter
