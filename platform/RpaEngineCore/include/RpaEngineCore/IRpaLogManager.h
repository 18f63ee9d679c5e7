// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>

#include <QDateTime>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVector>

// How serious a line is.
enum class RpaLogLevel
{
    Debug,
    Info,
    Warning,
    Error,
};

// One line of the log.
struct RPAENGINECORE_EXPORT RpaLogLine
{
    qint64 number = 0; // counts from 1 since Initialize()
    QDateTime time;
    RpaLogLevel level = RpaLogLevel::Info;
    QString text;
    QString statementId; // empty when the line belongs to no statement
    int line = 0;        // number of that statement in its process, or line of the program text; 0: neither
};

Q_DECLARE_METATYPE(RpaLogLine)

// The lines a run wrote, bounded: the oldest are dropped. GUI thread only.
class RPAENGINECORE_EXPORT IRpaLogDataSource : public QObject
{
    Q_OBJECT

public:
    explicit IRpaLogDataSource(QObject* parent = nullptr);
    ~IRpaLogDataSource() override;

    // Empties the source and starts anew; line numbers begin at 1 again.
    virtual void Initialize() = 0;

    // Those that were not dropped, the oldest first.
    virtual QVector<RpaLogLine> GetLines() const = 0;

signals:
    // The source was emptied.
    void SigInitialized();
    // Several lines at once, at most one signal per turn of the event loop.
    void SigLinesAdded(const QVector<RpaLogLine>& lines);
};

// Writes the log of runs and gives it to whoever shows it. GUI thread only.
class RPAENGINECORE_EXPORT IRpaLogManager
{
public:
    virtual ~IRpaLogManager();

    // May be null when the engine keeps no log.
    virtual IRpaLogDataSource* GetLogDataSource() const = 0;

    // line: as in RpaLogLine.
    virtual void Append(RpaLogLevel level, const QString& text, const QString& statementId = QString(),
                        int line = 0) = 0;
};
