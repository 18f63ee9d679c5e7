// SPDX-License-Identifier: Apache-2.0

// Random processes come to the same whether they run through, are stepped through, or stop at random places.

#include "DebugScript.h"
#include "RandomProcess.h"

namespace
{

constexpr int processesInTheSuite = 40;
constexpr int stepsAtMost = 5000;

int ProcessCount()
{
    const int given = qEnvironmentVariableIntValue("RPA_DEBUG_PROCESSES");
    return given > 0 ? given : processesInTheSuite;
}

// What the run logged, and how it ended.
QString ResultOf(DebugScript& script, const QString& end)
{
    return script.Do({QStringLiteral("log")}).value(0) + QLatin1Char('/') + end;
}

QString RunThrough(DebugScript& script)
{
    return ResultOf(script, script.Do({QStringLiteral("run")}).value(0));
}

bool IsOver(const QString& told)
{
    return told == QStringLiteral("end") || told == QStringLiteral("failed") ||
           told == QStringLiteral("stopped") || told == QStringLiteral("nothing happened");
}

QString StepThrough(DebugScript& script, int& stops)
{
    QString told = script.Do({QStringLiteral("plan first"), QStringLiteral("run")}).value(0);
    for (stops = 0; !IsOver(told) && stops < stepsAtMost; ++stops)
        told = script.Do({QStringLiteral("into")}).value(0);
    return ResultOf(script, told);
}

// Breakpoints and errors at random, and goes on in a random way each time; looks at the variables meanwhile.
QString StopHereAndThere(DebugScript& script, QRandomGenerator& random, int statements, int& stops)
{
    static const QStringList ways{QStringLiteral("continue"), QStringLiteral("into"), QStringLiteral("over"),
                                  QStringLiteral("out")};
    QStringList places;
    QStringList commands{QStringLiteral("errors all")};
    for (int i = 0; i < 3; ++i)
        places << QString::number(1 + random.bounded(statements));
    places << QStringLiteral("子流程:1");
    for (const QString& place : qAsConst(places))
        commands << QStringLiteral("break ") + place;
    QString told = script.Do(commands << QStringLiteral("run")).value(0);
    for (stops = 0; !IsOver(told) && stops < stepsAtMost; ++stops) {
        script.Do({QStringLiteral("vars 全局变量")});
        told = script.Do({ways.at(static_cast<int>(random.bounded(ways.size())))}).value(0);
    }
    QString result = ResultOf(script, told);
    QStringList away{QStringLiteral("errors never")};
    for (const QString& place : qAsConst(places))
        away << QStringLiteral("clear ") + place;
    script.Do(away);
    return result;
}

} // namespace

class DebugDifferential : public QObject
{
    Q_OBJECT

private slots:
    void comesToTheSameHoweverItIsRun();
};

void DebugDifferential::comesToTheSameHoweverItIsRun()
{
    int allStops = 0;
    DebugScript script;
    for (int seed = 1; seed <= ProcessCount(); ++seed) {
        RandomProcess make(static_cast<quint32>(seed));
        script.SetProcess(QStringLiteral("孙流程"), make.Make({}));
        script.SetProcess(QStringLiteral("子流程"), make.Make({QStringLiteral("孙流程")}));
        script.SetProcess(QStringLiteral("主流程"),
                          RandomProcess::Beginning() +
                              make.Make({QStringLiteral("子流程"), QStringLiteral("孙流程")}));
        const int statements = script.processes.FindProcess(QStringLiteral("主流程"))->GetStatementCount();
        QRandomGenerator random(static_cast<quint32>(seed));
        int steps = 0;
        int stops = 0;

        const QString through = RunThrough(script);
        const QString stepped = StepThrough(script, steps);
        const QString stopped = StopHereAndThere(script, random, statements, stops);

        const QByteArray which = "seed " + QByteArray::number(seed);
        QVERIFY2(through.endsWith(QStringLiteral("/end")) || through.endsWith(QStringLiteral("/failed")),
                 which + through.toUtf8());
        QVERIFY2(stepped == through,
                 which + " stepped: " + stepped.toUtf8() + " through: " + through.toUtf8());
        QVERIFY2(stopped == through,
                 which + " stopped: " + stopped.toUtf8() + " through: " + through.toUtf8());
        // At least the first three statements and the last one.
        QVERIFY2(steps >= 4 && steps < stepsAtMost, which);
        allStops += stops;
    }
    QVERIFY(allStops > 0);
}

QTEST_MAIN(DebugDifferential)
#include "tst_debugdifferential.moc"
