// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace
{

QString RuntimeText()
{
    QFile file(QStringLiteral(":/rpa/runtime/rpa_api.py"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// An argument as an author would fill it, where the default is not enough.
QString SampleOf(const RpaArgumentInfo& argument)
{
    if (!argument.defaultValue.isEmpty())
        return argument.defaultValue;
    switch (argument.type) {
    case RpaArgumentType::Number:
        return QStringLiteral("1");
    case RpaArgumentType::Switch:
        return QStringLiteral("true");
    case RpaArgumentType::Choice:
        return argument.choices.isEmpty() ? QString() : argument.choices.first().value;
    case RpaArgumentType::Expression:
        return QStringLiteral("value");
    case RpaArgumentType::Variable:
        return QStringLiteral("value");
    case RpaArgumentType::Process:
        return QStringLiteral("主流程");
    default:
        return QStringLiteral("it's \"text\" ${output} \\");
    }
}

RpaStatement SampleOf(const RpaCommandInfo& command)
{
    RpaStatement statement;
    statement.command = command.name;
    for (const RpaArgumentInfo& argument : command.arguments)
        statement.arguments.insert(argument.name, SampleOf(argument));
    if (!command.output.title.isEmpty())
        statement.output = QStringLiteral("result");
    return statement;
}

RpaStatement SampleNamed(const QString& name)
{
    const RpaCommandInfo* const command = RpaCommandCatalogue::Instance()->Find(name);
    return command ? SampleOf(*command) : RpaStatement();
}

RpaStatement LoopAround(const QVector<RpaStatement>& children)
{
    RpaStatement loop;
    for (const RpaCommandInfo& command : RpaCommandCatalogue::Instance()->GetCommands()) {
        if (command.blockKind == RpaBlockKind::Loop) {
            loop = SampleOf(command);
            break;
        }
    }
    loop.children = children;
    return loop;
}

// The command where it may stand: behind what it follows, before what must follow it, inside a loop.
QVector<RpaStatement> Placed(const RpaCommandInfo& command)
{
    QVector<RpaStatement> statements;
    if (!command.follows.isEmpty())
        statements << SampleNamed(command.follows.first());
    statements << SampleOf(command);
    if (!command.followedBy.isEmpty())
        statements << SampleNamed(command.followedBy.first());
    return command.onlyInLoop ? QVector<RpaStatement>{LoopAround(statements)} : statements;
}

} // namespace

// Every command of the catalogue against the runtime that carries it out.
class CommandTemplates : public QObject
{
    Q_OBJECT

private slots:
    void callsOnlyWhatTheRuntimeOffers_data() { AddCommands(); }
    void callsOnlyWhatTheRuntimeOffers();
    void becomesPythonThatCompiles_data() { AddCommands(); }
    void becomesPythonThatCompiles();

private:
    static void AddCommands();
};

void CommandTemplates::AddCommands()
{
    QTest::addColumn<QString>("name");
    for (const RpaCommandInfo& command : RpaCommandCatalogue::Instance()->GetCommands())
        QTest::newRow(qPrintable(command.name)) << command.name;
}

void CommandTemplates::callsOnlyWhatTheRuntimeOffers()
{
    QFETCH(QString, name);
    const RpaCommandInfo* const command = RpaCommandCatalogue::Instance()->Find(name);
    const QString runtime = RuntimeText();
    QVERIFY(runtime.contains(QLatin1String("\ndef log(")));

    static const QRegularExpression call(QStringLiteral("\\brpa\\.(\\w+)"));
    auto match = call.globalMatch(command->pythonTemplate);
    while (match.hasNext()) {
        const QString function = match.next().captured(1);
        QVERIFY2(runtime.contains(QStringLiteral("\ndef %1(").arg(function)), qPrintable(function));
    }
}

// The first statement leaves the process again, so nothing of the command happens; what Python cannot compile
// fails nevertheless, because a program is compiled as a whole.
void CommandTemplates::becomesPythonThatCompiles()
{
    QFETCH(QString, name);
    const RpaCommandInfo* const command = RpaCommandCatalogue::Instance()->Find(name);
    EngineRunFixture engine;

    QVERIFY(engine.RunStatements(QVector<RpaStatement>{SampleNamed(QStringLiteral("process.return"))} +
                                 Placed(*command)));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("运行完成")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

QTEST_MAIN(CommandTemplates)
#include "tst_commandtemplates.moc"
