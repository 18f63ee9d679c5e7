// SPDX-License-Identifier: Apache-2.0

#include "BuildInfo.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>
#include <WbHttpModule/WbHttpClient.h>
#include <WbSystem/PythonInterpreter.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSysInfo>
#include <QTimer>

#include <chrono>

namespace
{
constexpr auto answerWithin = std::chrono::seconds(10);
constexpr int longestValue = 200;

QString Or(const QString& value, const QString& otherwise)
{
    return value.isEmpty() ? otherwise : value;
}

// "rpa-version-server 0.1.0" and "databases: SQLite 3.40.1, PostgreSQL", a line each.
QString ServerText(const QString& output)
{
    const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QString version = lines.value(0).section(QLatin1Char(' '), 1).trimmed();
    const QString databases = lines.value(1)
                                  .section(QStringLiteral("databases: "), 1)
                                  .trimmed()
                                  .replace(QStringLiteral(", "), QStringLiteral("、"));
    if (version.isEmpty() || databases.isEmpty())
        return {};
    return QStringLiteral("%1，数据库：%2").arg(version, databases);
}

// "Python 3.11.2"
QString PythonText(const QString& output, const QString& program)
{
    const QString version = output.section(QLatin1Char('\n'), 0, 0).trimmed();
    const QString number = version.section(QStringLiteral("Python "), 1);
    return number.isEmpty() ? QString() : QStringLiteral("%1（%2）").arg(number, program);
}
} // namespace

BuildInfo::BuildInfo(const QString& serverProgram, QObject* parent) : QObject(parent)
{
    facts = {
        {QStringLiteral("版本"), QCoreApplication::applicationVersion()},
        {QStringLiteral("Qt"), QStringLiteral("%1（以 %2 构建）")
                                   .arg(QString::fromLatin1(qVersion()), QLatin1String(QT_VERSION_STR))},
        {QStringLiteral("内嵌浏览器"), Or(WbBrowserLite::GetEngineName(), QStringLiteral("无"))},
        {QStringLiteral("代码高亮"),
         Or(ProcessProgramEditorWidget::GetHighlighterName(), QStringLiteral("自带实现"))},
        {QStringLiteral("网络"), WbHttpClient::GetLibraryName()},
        {QStringLiteral("加密连接"), Or(WbHttpClient::GetTlsName(), QStringLiteral("无"))},
    };
    Ask(QStringLiteral("版本服务"), serverProgram, QStringLiteral("无法启动"), ServerText);
    const QString python = PythonInterpreter::Find();
    Ask(QStringLiteral("Python"), python, QStringLiteral("未找到"),
        [python](const QString& output) { return PythonText(output, QDir::toNativeSeparators(python)); });
    facts += {
        {QStringLiteral("编译器"), QStringLiteral(RPA_COMPILER)},
        {QStringLiteral("二进制接口"), QSysInfo::buildAbi()},
        {QStringLiteral("系统"), QSysInfo::prettyProductName()},
    };
}

BuildInfo::~BuildInfo()
{
    for (QProcess* process : findChildren<QProcess*>()) {
        process->disconnect(this);
        process->kill();
        process->waitForFinished();
    }
}

QString BuildInfo::GetText() const
{
    QString text;
    for (const BuildFact& fact : facts)
        text += fact.name + QLatin1Char('\t') + fact.value + QLatin1Char('\n');
    return text;
}

void BuildInfo::Ask(const QString& name, const QString& program, const QString& missing, const Read& read)
{
    const int row = facts.size();
    facts.append({name, program.isEmpty() ? missing : QStringLiteral("正在查询…")});
    if (program.isEmpty())
        return;
    auto* process = new QProcess(this);
    const auto show = [this, row, missing, read, process] {
        process->disconnect(this);
        Set(row, Or(read(QString::fromUtf8(process->readAllStandardOutput())), missing));
        process->deleteLater();
    };
    connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, show);
    connect(process, &QProcess::errorOccurred, this, show);
    QTimer::singleShot(answerWithin, process, &QProcess::kill);
    process->start(program, {QStringLiteral("--version")}, QIODevice::ReadOnly);
}

void BuildInfo::Set(int row, const QString& value)
{
    facts[row].value = value.left(longestValue);
    emit SigChanged();
}
