// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

// CSV as spreadsheets read and write it. Pure functions, any thread.
namespace CsvText
{

// Rows of cells. UTF-8 with or without BOM, commas, semicolons or tabs (whichever the first line holds most
// of), quotes with line breaks inside, LF or CRLF. Bytes that are no UTF-8 are read as the Chinese national
// encoding.
QVector<QStringList> Read(const QByteArray& bytes);

// UTF-8 with BOM and CRLF, as spreadsheets expect it. Texts that a spreadsheet would take for a formula (they
// begin with = + - @) are preceded by an apostrophe, unless they are numbers.
QByteArray Write(const QVector<QStringList>& rows);

// Its parts: what it begins with, and lines.
extern const QByteArray bom;
QByteArray WriteLines(const QVector<QStringList>& rows);

// Cells of the clipboard: rows by line breaks, cells by tabs; quoted cells may hold both.
QVector<QStringList> ReadClipboard(const QString& text);
QString WriteClipboard(const QVector<QStringList>& rows);

} // namespace CsvText
