// SPDX-License-Identifier: Apache-2.0

#include "CsvText_p.h"
#include "TableFile_p.h"
#include "TableModel_p.h"
#include "XlsxReader_p.h"
#include "XlsxWriter_p.h"

#include <QFile>
#include <QSaveFile>

namespace
{
constexpr qint64 tableBytesAtMost = 64 * 1024 * 1024;
constexpr int rowsPerReport = 1000;

bool IsWorkbook(const QString& path)
{
    return path.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".xlsm"), Qt::CaseInsensitive);
}

TableFile::Content ReadCsv(QFile& file, const TableFile::Progress& progress)
{
    TableFile::Content content;
    const QVector<QStringList> lines = CsvText::Read(file.readAll());
    content.rows.reserve(lines.size());
    for (const QStringList& line : lines) {
        QVector<QVariant> row;
        row.reserve(line.size());
        for (const QString& cell : line)
            row << cell;
        content.rows << row;
        if (content.rows.size() % rowsPerReport == 0 &&
            !progress(int(qint64(content.rows.size()) * 900 / lines.size())))
            break;
    }
    return content;
}

// False when progress ended the work.
bool WriteCsv(QIODevice& file, const RpaTableData::Content& table, const TableFile::Progress& progress)
{
    QVector<QStringList> lines(1);
    for (const RpaTableColumn& column : table.columns)
        lines.first() << column.name;
    file.write(CsvText::bom);
    for (int row = 0; row < table.rows.size(); ++row) {
        QStringList cells;
        for (const QVariant& cell : table.rows.at(row))
            cells << TableModel::TextOf(cell);
        lines << cells;
        if (lines.size() < rowsPerReport)
            continue;
        file.write(CsvText::WriteLines(lines));
        lines.clear();
        if (!progress(int(qint64(row) * 1000 / table.rows.size())))
            return false;
    }
    file.write(CsvText::WriteLines(lines));
    return true;
}
} // namespace

TableFile::Content TableFile::Read(const QString& path, const Progress& progress)
{
    Content refused;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refused.problem = QStringLiteral("无法读取文件：%1").arg(file.errorString());
    else if (file.size() > tableBytesAtMost)
        refused.problem = QStringLiteral("文件超过 64 MB，无法导入");
    if (!refused.problem.isEmpty())
        return refused;
    return IsWorkbook(path) ? XlsxReader::Read(file, progress) : ReadCsv(file, progress);
}

QString TableFile::Write(const QString& path, const RpaTableData::Content& table, const Progress& progress)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("无法写入文件：%1").arg(file.errorString());
    bool isEnded = false;
    const Progress watched = [&](int permille) { return !(isEnded = !progress(permille)); };
    QString problem;
    if (IsWorkbook(path))
        problem = XlsxWriter::Write(file, table, watched);
    else
        WriteCsv(file, table, watched);
    if (isEnded || !problem.isEmpty()) {
        file.cancelWriting();
        return problem;
    }
    return file.commit() ? QString() : QStringLiteral("无法写入文件：%1").arg(file.errorString());
}
