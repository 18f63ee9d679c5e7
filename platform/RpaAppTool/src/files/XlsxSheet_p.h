// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableFile_p.h"

class QXmlStreamReader;
class ZipEntry;

// Reads the shared texts and the cells of one sheet. Both operations give false when the part is damaged, too
// large, or progress ended the work.
class XlsxSheet
{
public:
    // styles: per cell format whether it shows a date; since1904: from when days are counted.
    XlsxSheet(const QVector<bool>& styles, bool since1904) : dateStyles(styles), from1904(since1904) {}

    bool ReadTexts(ZipEntry& part, const TableFile::Progress& progress);
    bool ReadRows(ZipEntry& part, const TableFile::Progress& progress);

    bool IsTooLarge() const { return isTooLarge; }
    QVector<QVector<QVariant>> TakeRows();

    // Formats of numbers that need no description, and show a date.
    static bool IsBuiltInDate(int format);

private:
    struct Cell
    {
        int column = -1;
        QString type;
        int style = -1;
    };
    bool BeginRow(const QXmlStreamReader& xml);
    bool BeginCell(const QXmlStreamReader& xml);
    void Put(const QVariant& value);
    QVariant ValueOf(const QString& text) const;
    QVariant MomentOf(double days) const;

    const QVector<bool> dateStyles;
    const bool from1904;
    QVector<QString> texts;
    QVector<QVector<QVariant>> rows;
    Cell cell;
    int cells = 0;
    bool isTooLarge = false;
};
