// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>

#include <QAbstractTableModel>
#include <QPointer>
#include <QVector>

// The lines of a log that pass the filter. It holds no more lines than the source; the oldest go in blocks,
// so that a run that floods the log costs little per line.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        LineColumn, // of the statement, or of the program text
        TimeColumn,
        LevelColumn,
        TextColumn,
        ColumnCount,
    };
    static constexpr int linesAtMost = 10000;
    static constexpr int linesPerDrop = 2000;

    using QAbstractTableModel::QAbstractTableModel;

    void SetSource(IRpaLogDataSource* source);
    // Lines below the level are left out; a text that is not empty must occur, upper or lower case.
    void SetFilter(RpaLogLevel lowest, const QString& text);

    // Whole: with all the lines of a text, not only its first.
    void SetShowsWholeTexts(bool whole);

    const QVector<RpaLogLine>& GetLines() const { return lines; }
    const RpaLogLine& GetLine(int row) const { return lines.at(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Shown(const RpaLogLine& line, int column) const;
    void Reload();
    void Add(const QVector<RpaLogLine>& added);
    bool Passes(const RpaLogLine& line) const;

    QPointer<IRpaLogDataSource> source;
    QVector<RpaLogLine> lines;
    RpaLogLevel lowest = RpaLogLevel::Info;
    QString text;
    bool showsWhole = false;
    qint64 newest = 0; // a line may be read before it is announced
};
