// SPDX-License-Identifier: Apache-2.0

#include "LogText_p.h"

#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <WbBaseUI/WbToast.h>

#include <QCoreApplication>
#include <QSaveFile>
#include <QThreadPool>

namespace
{
// Why it could not be written; empty when it was.
QString Write(const QString& path, const QVector<RpaLogLine>& lines)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    for (const RpaLogLine& line : lines)
        if (file.write(LogText::Of(line).toUtf8() + '\n') < 0)
            return file.errorString();
    return file.commit() ? QString() : file.errorString();
}

void Tell(const QString& problem, int count)
{
    if (problem.isEmpty())
        WbToast::Show(QStringLiteral("已保存 %1 行日志").arg(count), ToastSuccess);
    else
        WbToast::Show(QStringLiteral("日志无法保存，请换一个位置再试"), ToastError);
}
} // namespace

QString LogText::Of(const RpaLogLine& line)
{
    const QString place = line.line > 0 ? QStringLiteral("第 %1 行 ").arg(line.line) : QString();
    return line.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) + QStringLiteral(" [") +
           RpaLogLevelTitle(line.level) + QStringLiteral("] ") + place + line.text;
}

void LogText::Save(const QString& path, const QVector<RpaLogLine>& lines)
{
    QThreadPool::globalInstance()->start([path, lines] {
        const QString problem = Write(path, lines);
        QMetaObject::invokeMethod(
            qApp, [problem, count = lines.size()] { Tell(problem, count); }, Qt::QueuedConnection);
    });
}
