#pragma once

#include <QPlainTextEdit>
#include <QPointer>

class IRpaLogDataSource;
class IRpaLogManager;
struct RpaLogLine;

// The lines that development runs write, newest at the bottom. It reads only.
class RunLogView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit RunLogView(QWidget* parent = nullptr);
    ~RunLogView() override;

    // Null, or a manager without a log, shows nothing.
    void SetSource(const IRpaLogManager* manager);

private:
    void Reload();
    void Append(const QVector<RpaLogLine>& lines);

    QPointer<IRpaLogDataSource> source;
};
