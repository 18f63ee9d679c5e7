// SPDX-License-Identifier: Apache-2.0

#include "AuthorProcess.h"

#include <QElapsedTimer>
#include <QTest>

namespace
{
constexpr int longestMs = 10000;
}

AuthorProcess::AuthorProcess(const QString& dataFolder, const QString& server)
    : folder(dataFolder), serverProgram(server)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

AuthorProcess::~AuthorProcess()
{
    Kill();
}

bool AuthorProcess::Start()
{
    process.start(QStringLiteral(AUTHOR_PROGRAM), {folder, serverProgram});
    if (!process.waitForStarted())
        return false;
    Do(QStringLiteral("click buttonEnter"));
    Do(QStringLiteral("listed 库存预警示例"));
    return process.state() == QProcess::Running;
}

QString AuthorProcess::Do(const QString& act)
{
    process.write(act.toUtf8() + '\n');
    QElapsedTimer clock;
    clock.start();
    while (!process.canReadLine() && process.state() == QProcess::Running && clock.elapsed() < longestMs)
        process.waitForReadyRead(100);
    const QString line = QString::fromUtf8(process.readLine()).trimmed();
    if (!line.startsWith(QLatin1String("ok"))) {
        QTest::qFail(qPrintable(QStringLiteral("cannot be done: ") + act), __FILE__, __LINE__);
        Kill(); // what comes next cannot be done either
    }
    return line.mid(3);
}

void AuthorProcess::Kill()
{
    process.kill(); // SIGKILL
    process.waitForFinished();
}

bool AuthorProcess::Close()
{
    process.closeWriteChannel();
    return process.waitForFinished(longestMs) && process.exitStatus() == QProcess::NormalExit;
}
