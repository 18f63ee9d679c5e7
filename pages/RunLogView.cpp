#include "RunLogView.h"

#include <RpaEngineCore/IRpaLogManager.h>

#include <QStringList>

namespace
{

constexpr int shownLines = 5000;

} // namespace

RunLogView::RunLogView(QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("textDevelopLog"));
    setReadOnly(true);
    setMaximumBlockCount(shownLines);
    setPlaceholderText(QStringLiteral("运行日志"));
}

RunLogView::~RunLogView() = default;

void RunLogView::SetSource(const IRpaLogManager* manager)
{
    source = manager ? manager->GetLogDataSource() : nullptr;
    if (!source) {
        return;
    }
    connect(source, &IRpaLogDataSource::SigInitialized, this, &RunLogView::Reload);
    connect(source, &IRpaLogDataSource::SigLinesAdded, this, &RunLogView::Append);
    Reload();
}

void RunLogView::Reload()
{
    clear();
    Append(source->GetLines());
}

void RunLogView::Append(const QVector<RpaLogLine>& lines)
{
    QStringList texts;
    for (const RpaLogLine& line : lines) {
        texts.append(
            QStringLiteral("%1  %2").arg(line.time.toString(QStringLiteral("HH:mm:ss.zzz")), line.text));
    }
    if (!texts.isEmpty()) {
        appendPlainText(texts.join(QLatin1Char('\n')));
    }
}
