// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugSource_p.h"

// A debug session whose program does what the test says. It remembers what it was asked; the test answers
// when, as often and for whatever stop it likes.
class ScriptedDebugSource : public DebugSource
{
public:
    struct Question
    {
        QString kind; // scopes, children, evaluate, set
        int frame = 0;
        int handle = 0;
        int first = 0;
        int count = 0;
        QString text{};
        int request = 0;
    };

    RpaDebugSession::State GetState() const override { return state; }
    RpaPause GetPause() const override { return pause; }
    void SetBreakpoints(const QVector<RpaBreakpoint>& given) override { breakpoints = given; }
    void SetWatches(const QStringList& expressions) override { watches = expressions; }
    int AskScopes(int frame) override { return Ask({QStringLiteral("scopes"), frame}); }
    int AskChildren(int handle, int first, int count) override
    {
        return Ask({QStringLiteral("children"), 0, handle, first, count});
    }
    int Evaluate(int frame, const QString& expression) override
    {
        return Ask({QStringLiteral("evaluate"), frame, 0, 0, 0, expression});
    }
    int SetValue(int frame, int handle, const RpaDebugValue& value, const QString& expression) override
    {
        return Ask({QStringLiteral("set"), frame, handle, value.index, 0,
                    value.name + QLatin1Char('=') + expression});
    }

    void Start()
    {
        state = RpaDebugSession::State::Running;
        emit SigStarted();
    }

    // Stops in the frames, the innermost first.
    void Stop(const QVector<RpaDebugFrame>& stack)
    {
        state = RpaDebugSession::State::Paused;
        pause = RpaPause();
        pause.number = ++stops;
        pause.stack = stack;
        pause.depth = stack.size() + depthMore;
        emit SigPaused(pause);
    }

    void Resume()
    {
        state = RpaDebugSession::State::Running;
        pause = RpaPause();
        emit SigResumed();
    }

    void End()
    {
        state = RpaDebugSession::State::Idle;
        pause = RpaPause();
        emit SigEnded();
    }

    void Answer(int request, const QVector<RpaDebugValue>& values, int total = -1)
    {
        RpaDebugAnswer answer;
        answer.request = request;
        answer.ok = true;
        answer.values = values;
        answer.total = total < 0 ? values.size() : total;
        emit SigAnswer(answer);
    }

    void Refuse(int request, const QString& error)
    {
        RpaDebugAnswer answer;
        answer.request = request;
        answer.error = error;
        emit SigAnswer(answer);
    }

    // The newest question of the kind; request 0 when there was none.
    Question Asked(const QString& kind) const
    {
        for (int i = questions.size() - 1; i >= 0; --i)
            if (questions.at(i).kind == kind)
                return questions.at(i);
        return {};
    }

    static RpaDebugValue Value(const QString& name, const QString& text, int handle = 0, int inside = 0)
    {
        RpaDebugValue value;
        value.name = name;
        value.text = text;
        value.type = inside > 0 ? QStringLiteral("list") : QStringLiteral("int");
        value.handle = handle;
        value.inside = inside;
        value.size = inside > 0 ? inside : -1;
        value.settable = true;
        return value;
    }

    static RpaDebugValue Heading(const QString& name, int handle, int inside)
    {
        RpaDebugValue value = Value(name, QString(), handle, inside);
        value.type.clear();
        value.settable = false;
        return value;
    }

    QVector<RpaBreakpoint> breakpoints;
    QStringList watches;
    QVector<Question> questions;
    int depthMore = 0; // calls beyond those of the stack

private:
    int Ask(Question question)
    {
        if (state != RpaDebugSession::State::Paused)
            return 0;
        question.request = ++lastRequest;
        questions.append(question);
        return question.request;
    }

    RpaDebugSession::State state = RpaDebugSession::State::Idle;
    RpaPause pause;
    int stops = 0;
    int lastRequest = 0;
};
