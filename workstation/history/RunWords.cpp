// SPDX-License-Identifier: Apache-2.0

#include "RunWords.h"

#include <RpaEngineCore/RpaLogLevelTitle.h>

#include <QStringList>

namespace
{
QString PlaceOf(const RpaRunRecord& run)
{
    if (run.failedProcess.isEmpty())
        return QString();
    const QString process = QStringLiteral("在流程“%1”").arg(run.failedProcess);
    return run.failedLine > 0 ? process + QStringLiteral("第 %1 行").arg(run.failedLine) : process;
}

void AddFact(QStringList* facts, const QString& name, const QString& text)
{
    if (!text.isEmpty())
        facts->append(QStringLiteral("%1：%2").arg(name, text));
}
} // namespace

QString RunWords::Result(RpaRunResult result)
{
    switch (result) {
    case RpaRunResult::Running:
        return QStringLiteral("正在运行");
    case RpaRunResult::Succeeded:
        return QStringLiteral("成功");
    case RpaRunResult::Failed:
        return QStringLiteral("失败");
    case RpaRunResult::Stopped:
        return QStringLiteral("已停止");
    case RpaRunResult::Lost:
        break;
    }
    return QStringLiteral("中断");
}

QString RunWords::Duration(const RpaRunRecord& run)
{
    if (run.result == RpaRunResult::Running || run.result == RpaRunResult::Lost)
        return QString();
    const qint64 seconds = run.duration / 1000;
    if (seconds < 1)
        return QStringLiteral("%1 毫秒").arg(run.duration);
    if (seconds < 10)
        return QStringLiteral("%1 秒").arg(double(run.duration) / 1000, 0, 'f', 1);
    if (seconds < 60)
        return QStringLiteral("%1 秒").arg(seconds);
    if (seconds < 3600)
        return QStringLiteral("%1 分 %2 秒").arg(seconds / 60).arg(seconds % 60);
    return QStringLiteral("%1 小时 %2 分").arg(seconds / 3600).arg(seconds % 3600 / 60);
}

QString RunWords::Outcome(const RpaRunRecord& run)
{
    switch (run.result) {
    case RpaRunResult::Failed:
        return PlaceOf(run).isEmpty() ? QStringLiteral("失败：%1").arg(run.reason)
                                      : QStringLiteral("%1失败：%2").arg(PlaceOf(run), run.reason);
    case RpaRunResult::Lost:
        return QStringLiteral("中断：工作站在运行结束之前退出了");
    default:
        return Result(run.result);
    }
}

QString RunWords::Facts(const RpaRunRecord& run, DateLanguage language)
{
    QStringList facts;
    AddFact(&facts, QStringLiteral("流程"), run.processName);
    AddFact(&facts, QStringLiteral("开始"), DateText(run.started, language));
    AddFact(&facts, QStringLiteral("用时"), Duration(run));
    AddFact(&facts, QStringLiteral("版本"),
            run.revision > 0 ? QStringLiteral("%1（第 %2 次保存）").arg(run.versionName).arg(run.revision)
                             : run.versionName);
    AddFact(&facts, QStringLiteral("运行人"), run.account);
    AddFact(&facts, QStringLiteral("来自"),
            run.origin == RpaRunOrigin::Editor ? QStringLiteral("编辑器") : QStringLiteral("发布的应用"));
    QStringList values;
    for (const RpaRunValue& value : run.parameters)
        values.append(QStringLiteral("%1 = %2").arg(value.name, value.text));
    AddFact(&facts, QStringLiteral("参数"), values.join(QStringLiteral("，")));
    AddFact(&facts, QStringLiteral("扩展包"), run.packages.join(QStringLiteral("，")));
    return facts.join(QLatin1Char('\n'));
}

QString RunWords::Log(const RpaRunRecord& run, const QVector<RpaLogLine>& lines)
{
    QStringList texts;
    if (run.missingLines > 0)
        texts.append(QStringLiteral("（较早的 %1 行没有保留）").arg(run.missingLines));
    for (const RpaLogLine& line : lines)
        if (line.level != RpaLogLevel::Debug)
            texts.append(QStringLiteral("%1  %2  %3")
                             .arg(line.time.toString(QStringLiteral("HH:mm:ss")),
                                  RpaLogLevelTitle(line.level), line.text));
    return texts.join(QLatin1Char('\n'));
}
