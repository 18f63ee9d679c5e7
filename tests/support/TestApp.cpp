// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include "RpaResources.h"

#include <QFont>
#include <QMutex>
#include <QMutexLocker>
#include <QStringList>
#include <QThread>
#include <QtTest>

namespace
{

constexpr qreal fontPoints = 9;

QMutex expectedMutex;
QStringList expectedWarnings;
QtMessageHandler testLibraryHandler = nullptr;

// What the offscreen platform says about itself is nobody's fault.
bool IsAboutThePlatformPlugin(const QString& message)
{
    return message.startsWith(QLatin1String("This plugin does not support"));
}

bool TakeExpected(const QString& message)
{
    const QMutexLocker lock(&expectedMutex);
    for (int i = 0; i < expectedWarnings.size(); ++i) {
        if (message.contains(expectedWarnings.at(i))) {
            expectedWarnings.removeAt(i);
            return true;
        }
    }
    return false;
}

void FailOnWarning(const QString& message)
{
    if (QTest::currentTestFunction())
        QTest::qFail(qPrintable(QStringLiteral("unexpected warning: %1").arg(message)), __FILE__, __LINE__);
}

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const bool serious = type == QtWarningMsg || type == QtCriticalMsg;
    if (serious && (IsAboutThePlatformPlugin(message) || TakeExpected(message)))
        return;
    testLibraryHandler(type, context, message);
    if (!serious)
        return;
    if (QThread::currentThread() == qApp->thread())
        FailOnWarning(message);
    else
        QMetaObject::invokeMethod(qApp, [message] { FailOnWarning(message); });
}

} // namespace

TestApp::TestApp(int& argc, char** argv) : QApplication(argc, argv)
{
    RpaResources::Init();
    QFont font;
    font.setFamilies({QStringLiteral("Microsoft YaHei UI"), QStringLiteral("Noto Sans CJK SC"),
                      QStringLiteral("WenQuanYi Micro Hei")});
    font.setPointSizeF(fontPoints);
    setFont(font);
}

int TestApp::Run(QObject* test, int argc, char** argv)
{
    QTest::qInit(test, argc, argv);
    // The test library has put its own handler in by now; ours stands in front of it.
    testLibraryHandler = qInstallMessageHandler(&HandleMessage);
    const int failures = QTest::qRun();
    qInstallMessageHandler(testLibraryHandler);
    QTest::qCleanup();
    return failures;
}

void TestApp::ExpectWarning(const QString& part)
{
    const QMutexLocker lock(&expectedMutex);
    expectedWarnings.append(part);
}
