// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EngineRunFixture.h"
#include "TestFolder.h"

#include <RpaEngineCore/IAppParamEngine.h>

#include <QVector>

class SpanListener : public IProcessLifeCycle
{
public:
    SpanListener() { RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this); }
    ~SpanListener() override { RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this); }

    void RunSpans(const RpaRunSpans& news) override
    {
        largest = qMax(largest, news.spans.size());
        for (const RpaRunSpan& span : news.spans)
            (span.kind == RpaSpanKind::Position ? positions : spans).append(span);
        sums += news.sums;
    }
    void RunFailed(const RpaRunFailure& told) override
    {
        ++failures;
        failure = told;
    }

    QStringList Calls() const
    {
        QStringList calls;
        for (const RpaRunSpan& span : spans)
            calls << span.call;
        return calls;
    }

    QVector<RpaRunSpan> spans;
    QVector<RpaRunSpan> positions;
    QVector<RpaRunSpanSum> sums;
    RpaRunFailure failure;
    int failures = 0;
    int largest = 0;
};

class SecretParams : public IAppParamEngine
{
public:
    QStringList GetParamNames() const override { return {QStringLiteral("密码"), QStringLiteral("城市")}; }
    QStringList GetSecretParamNames() const override { return {QStringLiteral("密码")}; }
    QVariant GetParam(const QString& name) const override
    {
        return name == QStringLiteral("密码") ? QStringLiteral("hunter22") : QStringLiteral("上海");
    }
    bool SetParam(const QString&, const QVariant&) override { return true; }
};

inline RpaStatement StatementOf(const char* id, const char* command)
{
    RpaStatement statement;
    statement.id = QString::fromLatin1(id);
    statement.command = QString::fromLatin1(command);
    return statement;
}

// An app of one process that runs with a page of a password and a city, and what is told of its runs.
class SpanFixture
{
public:
    SpanFixture() { EngineRunFixture::Engine()->SetAppParamEngine(&params); }

    // "@" stands for the folder.
    bool Run(QString program)
    {
        program.replace(QStringLiteral("@"), folder.path() + QLatin1Char('/'));
        return run.RunText(program) && run.life.WaitUntilOver();
    }

    TestFolder folder;
    SecretParams params;
    EngineRunFixture run;
    SpanListener told;
};
