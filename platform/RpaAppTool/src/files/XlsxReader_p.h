// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableFile_p.h"

class QIODevice;

// The cells of a workbook's first sheet. Any thread.
namespace XlsxReader
{
TableFile::Content Read(QIODevice& file, const TableFile::Progress& progress);

// Letters and number of a cell ("B3") or letters alone as a column that counts from 0; -1 for anything else,
// and beyond the last column that a sheet may have.
int ColumnOf(const QString& reference);
// Texts as the format writes characters that XML has no place for ("_x000D_").
QString Unescaped(const QString& text);
// Whether a number of this format is a date, a time or both.
bool IsDateFormat(const QString& format);
} // namespace XlsxReader
