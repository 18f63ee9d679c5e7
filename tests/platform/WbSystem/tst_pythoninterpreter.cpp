// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/PythonInterpreter.h>

#include <QProcess>
#include <QtTest>

namespace
{
const char* const variable = "RPA_PYTHON";
} // namespace

class PythonInterpreterTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { given = qgetenv(variable); }
    void cleanup() { given.isEmpty() ? qunsetenv(variable) : qputenv(variable, given); }

    void whatIsFoundIsPython3()
    {
        const QString python = PythonInterpreter::Find();

        QVERIFY(!python.isEmpty());
        QCOMPARE(
            QProcess::execute(python, {QStringLiteral("-I"), QStringLiteral("-c"),
                                       QStringLiteral("import sys; sys.exit(40 + sys.version_info.major)")}),
            43);
    }

    void theOneOfTheEnvironmentGoesFirst()
    {
        qputenv(variable, "/opt/my python/bin/python3");

        QCOMPARE(PythonInterpreter::Find(), QStringLiteral("/opt/my python/bin/python3"));
    }

    void anEmptyVariableChoosesNothing()
    {
        qunsetenv(variable);
        const QString withoutIt = PythonInterpreter::Find();

        qputenv(variable, "");

        QCOMPARE(PythonInterpreter::Find(), withoutIt);
    }

private:
    QByteArray given;
};

QTEST_GUILESS_MAIN(PythonInterpreterTest)
#include "tst_pythoninterpreter.moc"
