// SPDX-License-Identifier: Apache-2.0

#include "ProgramProbe_p.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
// The rules that the probe tells of a program; nothing while it has not answered.
QStringList RulesOf(const char* program)
{
    ProgramProbe probe;
    QSignalSpy answers(&probe, &ProgramProbe::SigAnswered);
    probe.Ask(QString::fromUtf8(program), QStringLiteral("主流程"));
    if (!answers.wait(30000))
        return {QStringLiteral("no answer")};
    QStringList rules;
    const auto problems = answers.at(0).at(0).value<QVector<RpaProblem>>();
    for (const RpaProblem& problem : problems)
        rules.append(problem.rule);
    return rules;
}
} // namespace

// The real Python, and such that answer whatever they like.
class ProgramProbeTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("RPA_PYTHON"); }
    void findsMistakes_data();
    void findsMistakes();
    void findsNothingWithoutAnAnswerToBeTrusted_data();
    void findsNothingWithoutAnAnswerToBeTrusted();
    void answersOnlyTheLastQuestion();
};

void ProgramProbeTest::findsMistakes_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QString>("rules");
    const auto row = [](const char* name, const char* program, const char* rules) {
        QTest::newRow(name) << QByteArray(program) << QString::fromLatin1(rules);
    };
    row("good", "import os\nrpa.log(os.name)\n名 = 1\nprint(名)", "");
    row("syntax", "x = 1\nif x\n", "syntax-error");
    row("indentation", "if True:\nprint(1)", "syntax-error");
    row("undefined", "print(x)", "undefined-name");
    row("unused import", "import os", "unused-import");
    row("unused local", "def f():\n    x = 1", "unused-local");
    row("defined twice", "def f(): pass\ndef f(): pass", "redefined-name");
    row("star", "from os import *\nprint(name)", "star-import program-mistake");
    row("null character", "x = '\\x00'", "");
}

void ProgramProbeTest::findsMistakes()
{
    QFETCH(QByteArray, program);
    QFETCH(QString, rules);

    QCOMPARE(RulesOf(program.constData()).join(QLatin1Char(' ')), rules);
}

void ProgramProbeTest::findsNothingWithoutAnAnswerToBeTrusted_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("garbage") << QByteArray("echo nonsense");
    QTest::newRow("failure") << QByteArray(R"(echo '{"syntax": [1, "x"]}'; exit 1)");
    QTest::newRow("without end") << QByteArray("exec cat /dev/zero");
    QTest::newRow("nothing") << QByteArray("exit 0");
    QTest::newRow("killed") << QByteArray("kill -9 $$");
}

void ProgramProbeTest::findsNothingWithoutAnAnswerToBeTrusted()
{
    QFETCH(QByteArray, script);
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("python")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script + "\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    file.close();
    qputenv("RPA_PYTHON", file.fileName().toUtf8());

    QCOMPARE(RulesOf("print(x)"), QStringList());
}

void ProgramProbeTest::answersOnlyTheLastQuestion()
{
    ProgramProbe probe;
    QSignalSpy answers(&probe, &ProgramProbe::SigAnswered);
    probe.Ask(QStringLiteral("print(x)"), QString());
    probe.Ask(QStringLiteral("import os"), QString());

    QVERIFY(answers.wait(30000));
    QCOMPARE(answers.at(0).at(0).value<QVector<RpaProblem>>().value(0).rule, QStringLiteral("unused-import"));
    probe.Ask(QStringLiteral("x = 1"), QString());
    QVERIFY(answers.wait(30000));
    QCOMPARE(answers.count(), 2);
}

QTEST_GUILESS_MAIN(ProgramProbeTest)
#include "tst_programprobe.moc"
