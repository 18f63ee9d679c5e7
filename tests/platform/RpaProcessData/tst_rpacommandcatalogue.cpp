// SPDX-License-Identifier: Apache-2.0

#include "TestFolder.h"

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaExpression.h>
#include <WbSystem/PythonInterpreter.h>

#include <QProcess>
#include <QtTest>

namespace
{
void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

// A text that every argument of the type takes.
QString SampleOf(const RpaArgumentInfo& argument)
{
    switch (argument.type) {
    case RpaArgumentType::Number:
        return QStringLiteral("3");
    case RpaArgumentType::Switch:
        return QStringLiteral("true");
    case RpaArgumentType::Choice:
        return argument.choices.first().value;
    case RpaArgumentType::Expression:
        return QStringLiteral("甲 if 乙 else 丙");
    case RpaArgumentType::Variable:
        return QStringLiteral("变量");
    default:
        return QStringLiteral("文本\"\\\n");
    }
}

QString ProgramOf(const RpaCommandInfo& command)
{
    QString program = command.imports.join(QLatin1Char('\n')) + QStringLiteral("\ndef f():\n");
    QStringList lines;
    if (!command.follows.isEmpty()) {
        const RpaCommandInfo* before = RpaCommandCatalogue::Instance()->Find(command.follows.first());
        lines << QString(before->pythonTemplate).replace(QStringLiteral("${condition}"), QStringLiteral("甲"))
              << QStringLiteral("    pass");
    }
    if (command.onlyInLoop)
        lines << QStringLiteral("while 甲:");
    QString text = command.pythonTemplate;
    for (const RpaArgumentInfo& argument : command.arguments)
        text.replace(QStringLiteral("${%1}").arg(argument.name),
                     RpaExpression::ToPython(argument.type, SampleOf(argument)));
    text.replace(QStringLiteral("${output}"), QStringLiteral("结果"));
    const QStringList own = text.split(QLatin1Char('\n'));
    for (const QString& line : own)
        lines << (command.onlyInLoop ? QStringLiteral("    ") : QString()) + line;
    if (command.HasChildren())
        lines << QStringLiteral("    pass");
    if (!command.followedBy.isEmpty())
        lines << QStringLiteral("finally:") << QStringLiteral("    pass");
    for (const QString& line : qAsConst(lines))
        program += QStringLiteral("    ") + line + QLatin1Char('\n');
    return program;
}
} // namespace

class RpaCommandCatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryCommandOnceWithChineseTitles();
    void makesPythonThatCompiles_data();
    void makesPythonThatCompiles();
    void namesOnlyCommandsThatExist();
    void findsCommands();
    void takesCommandsFromAFolder();
    void refusesBadFiles_data();
    void refusesBadFiles();
};

void RpaCommandCatalogueTest::hasEveryCommandOnceWithChineseTitles()
{
    const QVector<RpaCommandInfo> commands = RpaCommandCatalogue::Instance()->GetCommands();
    QVERIFY(commands.size() >= 35);

    QSet<QString> names;
    QSet<QString> titles;
    for (const RpaCommandInfo& command : commands) {
        QVERIFY2(!names.contains(command.name), qPrintable(command.name));
        names.insert(command.name);
        titles.insert(command.title);
        QVERIFY2(command.title.at(0).unicode() > 0x2E80 ||
                     command.title.contains(QRegularExpression(QStringLiteral("[一-龥]"))),
                 qPrintable(command.name));
        QVERIFY2(!command.description.isEmpty() && !command.summary.isEmpty(), qPrintable(command.name));
    }
    QCOMPARE(titles.size(), commands.size());
}

void RpaCommandCatalogueTest::makesPythonThatCompiles_data()
{
    QTest::addColumn<QString>("program");

    const QVector<RpaCommandInfo> commands = RpaCommandCatalogue::Instance()->GetCommands();
    for (const RpaCommandInfo& command : commands)
        QTest::newRow(qPrintable(command.name)) << ProgramOf(command);
}

void RpaCommandCatalogueTest::makesPythonThatCompiles()
{
    QFETCH(QString, program);
    QProcess python;
    python.start(PythonInterpreter::Find(),
                 {QStringLiteral("-I"), QStringLiteral("-X"), QStringLiteral("utf8"), QStringLiteral("-c"),
                  QStringLiteral("import sys; compile(sys.stdin.read(), 'program', 'exec')")});
    QVERIFY(python.waitForStarted());
    python.write(program.toUtf8());
    python.closeWriteChannel();
    QVERIFY(python.waitForFinished());

    QVERIFY2(python.exitCode() == 0, qPrintable(program + QString::fromUtf8(python.readAllStandardError())));
}

void RpaCommandCatalogueTest::namesOnlyCommandsThatExist()
{
    const QVector<RpaCommandInfo> commands = RpaCommandCatalogue::Instance()->GetCommands();
    for (const RpaCommandInfo& command : commands) {
        const QStringList others = command.follows + command.followedBy;
        for (const QString& other : others)
            QVERIFY2(RpaCommandCatalogue::Instance()->Find(other), qPrintable(other));
    }
}

void RpaCommandCatalogueTest::findsCommands()
{
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(QStringLiteral("loop.count"));

    QVERIFY(command);
    QCOMPARE(command->blockKind, RpaBlockKind::Loop);
    QVERIFY(command->FindArgument(QStringLiteral("times"))->required);
    QVERIFY(!command->FindArgument(QStringLiteral("none")));
    QVERIFY(!RpaCommandCatalogue::Instance()->Find(QStringLiteral("none")));
    QVERIFY(RpaCommandCatalogue::Instance()->GetGroups().contains(QStringLiteral("流程控制")));
}

void RpaCommandCatalogueTest::takesCommandsFromAFolder()
{
    TestFolder folder;
    WriteFile(
        folder.filePath(QStringLiteral("own.json")),
        R"([{"name":"own.greet","title":"问候","group":"自有","summary":"问候","python":["a = 1","b = 2"]},)"
        R"({"name":"log","title":"记录","group":"日志","summary":"记录","python":"pass"}])");
    const int before = RpaCommandCatalogue::Instance()->GetCommands().size();
    const RpaCommandInfo log = *RpaCommandCatalogue::Instance()->Find(QStringLiteral("log"));

    QCOMPARE(RpaCommandCatalogue::Instance()->AddFolder(folder.path()), QStringList());

    QCOMPARE(RpaCommandCatalogue::Instance()->GetCommands().size(), before + 1);
    QCOMPARE(RpaCommandCatalogue::Instance()->Find(QStringLiteral("own.greet"))->pythonTemplate,
             QStringLiteral("a = 1\nb = 2"));
    QCOMPARE(RpaCommandCatalogue::Instance()->Find(QStringLiteral("log"))->title, QStringLiteral("记录"));
}

void RpaCommandCatalogueTest::refusesBadFiles_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("no JSON") << QByteArray("name: a");
    QTest::newRow("no title") << QByteArray(R"([{"name":"x","group":"g","python":"pass"}])");
    QTest::newRow("no template") << QByteArray(R"([{"name":"x","title":"甲","group":"g"}])");
    QTest::newRow("unknown place") << QByteArray(
        R"([{"name":"x","title":"甲","group":"g","python":"${y}"}])");
    QTest::newRow("unknown type") << QByteArray(
        R"([{"name":"x","title":"甲","group":"g","python":"pass","arguments":[{"name":"a","title":"a","type":"z"}]}])");
    QTest::newRow("unknown form") << QByteArray(
        R"([{"name":"x","title":"甲","group":"g","python":"pass","arguments":[{"name":"a","title":"甲","type":"expression","form":"colour"}]}])");
    QTest::newRow("form of a text") << QByteArray(
        R"([{"name":"x","title":"甲","group":"g","python":"pass","arguments":[{"name":"a","title":"甲","type":"text","form":"list"}]}])");
    QTest::newRow("choice without choices") << QByteArray(
        R"([{"name":"x","title":"甲","group":"g","python":"pass","arguments":[{"name":"a","title":"a","type":"choice"}]}])");
    QTest::newRow("branch that follows nothing")
        << QByteArray(R"([{"name":"x","title":"甲","group":"g","python":"else:","block":"branch"}])");
}

void RpaCommandCatalogueTest::refusesBadFiles()
{
    QFETCH(QByteArray, json);
    TestFolder folder;
    WriteFile(folder.filePath(QStringLiteral("bad.json")), json);
    const int before = RpaCommandCatalogue::Instance()->GetCommands().size();

    const QStringList problems = RpaCommandCatalogue::Instance()->AddFolder(folder.path());

    QVERIFY(!problems.isEmpty());
    QVERIFY2(problems.first().startsWith(QStringLiteral("bad.json：")), qPrintable(problems.first()));
    QCOMPARE(RpaCommandCatalogue::Instance()->GetCommands().size(), before);
}

QTEST_GUILESS_MAIN(RpaCommandCatalogueTest)
#include "tst_rpacommandcatalogue.moc"
