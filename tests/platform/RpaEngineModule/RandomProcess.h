// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugStatements.h"

#include <QRandomGenerator>

// Processes that end soon and tell all of their variables, from a seed.
class RandomProcess
{
public:
    explicit RandomProcess(quint32 seed) : random(seed) {}

    // A process that may run the named ones; they need what the main one begins with.
    QVector<RpaStatement> Make(const QStringList& calls)
    {
        callable = calls;
        return Block(false) << Logging();
    }

    static QVector<RpaStatement> Beginning()
    {
        return {DebugStatements::Set("甲", "1"), DebugStatements::Set("乙", "2"),
                DebugStatements::Set("丙", "3")};
    }

private:
    int Below(int bound) { return static_cast<int>(random.bounded(bound)); }
    QByteArray Name() { return QStringLiteral("甲乙丙").mid(Below(3), 1).toUtf8(); }

    QVector<RpaStatement> Block(bool inLoop)
    {
        ++depth;
        QVector<RpaStatement> statements;
        for (int left = 1 + Below(3); left > 0; --left)
            statements << One(inLoop);
        --depth;
        return statements;
    }

    QVector<RpaStatement> One(bool inLoop)
    {
        const int kind = depth > 3 ? Below(4) : Below(9);
        if (kind < 3)
            return {Setting()};
        if (kind == 3)
            return Leaving(inLoop);
        if (kind == 4 && !callable.isEmpty())
            return {DebugStatements::Call(callable.at(Below(callable.size())).toUtf8().constData())};
        if (kind < 6)
            return {
                DebugStatements::Loop(Below(4), ("i" + QByteArray::number(depth)).constData(), Block(true))};
        if (kind < 8)
            return {DebugStatements::If(Condition().constData(), Block(inLoop)),
                    DebugStatements::Of("else", {}, Block(inLoop))};
        return Trying(inLoop);
    }

    QByteArray Condition() { return Name() + " % " + QByteArray::number(2 + Below(3)) + " == 0"; }

    RpaStatement Setting()
    {
        const QByteArray value = "(" + Name() + " * " + QByteArray::number(1 + Below(5)) + " + " + Name() +
                                 " + " + QByteArray::number(Below(9)) + ") % 1009";
        return DebugStatements::Set(Name().constData(), value.constData());
    }

    static RpaStatement Logging() { return DebugStatements::Log("f'{甲} {乙} {丙}'"); }

    QVector<RpaStatement> Leaving(bool inLoop)
    {
        if (!inLoop)
            return {Setting(), Logging()};
        const char* const command = Below(2) ? "loop.break" : "loop.continue";
        return {DebugStatements::If(Condition().constData(), {DebugStatements::Of(command, {})})};
    }

    QVector<RpaStatement> Trying(bool inLoop)
    {
        QVector<RpaStatement> body = Block(inLoop);
        // Fails for some values only.
        body << DebugStatements::Set(Name().constData(), ("7 // (" + Name() + " % 3)").constData());
        return {DebugStatements::Of("try", {}, body), DebugStatements::Of("except", {}, Block(inLoop)),
                DebugStatements::Of("finally", {}, {Setting(), Logging()})};
    }

    QRandomGenerator random;
    QStringList callable;
    int depth = 0;
};
