// SPDX-License-Identifier: Apache-2.0

#include "CodeHelper_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbSystem/ChildProcess.h>
#include <WbSystem/PythonInterpreter.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <iterator>

namespace
{
constexpr qint64 helperMemoryBytes = qint64(2) * 1024 * 1024 * 1024;
constexpr int helperProcesses = 8;
// Before its next start, by how often in a row it ended early.
constexpr int restartDelaysMs[] = {100, 1000, 5000, 30000, 120000};
// Longer nobody waits for its next start.
constexpr int shortWaitMs = 2000;
// One that answered so many questions works.
constexpr int answersOfASoundOne = 10;

bool CopyOut(const QString& resource, const QString& target)
{
    QFile::remove(target);
    return QFile::copy(resource, target);
}
} // namespace

CodeHelper::CodeHelper(QObject* parent) : QObject(parent)
{
    again.setSingleShot(true);
    connect(&again, &QTimer::timeout, this, &CodeHelper::Launch);
}

CodeHelper::~CodeHelper()
{
    if (process)
        process->disconnect(this);
}

void CodeHelper::Start()
{
    if (state != State::Off || again.isActive())
        return;
    if (WriteFiles())
        Launch();
    else
        BeMissing();
}

// What programs have besides Python lies apart, so that no program is offered the helper's own modules.
bool CodeHelper::WriteFiles()
{
    return folder.isValid() && QDir(folder.path()).mkpath(QStringLiteral("modules")) &&
           CopyOut(QStringLiteral(":/rpa/completion/code_helper.py"),
                   folder.filePath(QStringLiteral("code_helper.py"))) &&
           CopyOut(QStringLiteral(":/rpa/completion/jedi_scopes.py"),
                   folder.filePath(QStringLiteral("jedi_scopes.py"))) &&
           CopyOut(QStringLiteral(":/rpa/runtime/rpa.pyi"),
                   folder.filePath(QStringLiteral("modules/rpa.pyi")));
}

void CodeHelper::Launch()
{
    const QString python = PythonInterpreter::Find();
    if (python.isEmpty()) {
        BeMissing();
        return;
    }
    state = State::Starting;
    received.clear();
    answered = 0;
    process = std::make_unique<ChildProcess>();
    process->SetLimits(helperMemoryBytes, helperProcesses);
    process->setWorkingDirectory(folder.path());
    process->setStandardErrorFile(QProcess::nullDevice());
    connect(process.get(), &QProcess::readyReadStandardOutput, this, &CodeHelper::Read);
    // Later, because the process goes with its end.
    connect(process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &CodeHelper::TakeEnd, Qt::QueuedConnection);
    connect(
        process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                BeMissing();
        },
        Qt::QueuedConnection);
    process->Start(python,
                   {QStringLiteral("-I"), QStringLiteral("-B"), QStringLiteral("-u"), QStringLiteral("-X"),
                    QStringLiteral("utf8"), folder.filePath(QStringLiteral("code_helper.py"))});
}

bool CodeHelper::MayAnswer() const
{
    const bool startsSoon = again.isActive() && again.remainingTime() <= shortWaitMs;
    return state == State::Ready || state == State::Starting || startsSoon;
}

void CodeHelper::Send(const QByteArray& line)
{
    if (state != State::Ready)
        return;
    process->write(line + '\n');
}

void CodeHelper::End()
{
    if (process)
        process->KillAll();
}

void CodeHelper::Read()
{
    received += process->readAllStandardOutput();
    int begin = 0;
    for (int end = received.indexOf('\n'); end >= 0; end = received.indexOf('\n', begin)) {
        TakeLine(received.mid(begin, end - begin));
        begin = end + 1;
    }
    received.remove(0, begin);
    if (received.size() > mostAnswerBytes)
        End();
}

void CodeHelper::TakeLine(const QByteArray& line)
{
    JsonLimits limits;
    limits.sizeBytes = mostAnswerBytes;
    JsonReader reader(line, limits);
    QVariant value;
    if (!reader.ReadVariant(value) || !reader.Finish() || value.userType() != QMetaType::QVariantMap) {
        End();
        return;
    }
    const QVariantMap answer = value.toMap();
    if (answer.value(QStringLiteral("missing")).toBool()) {
        BeMissing();
    } else if (state == State::Starting && answer.value(QStringLiteral("ready")).toBool()) {
        state = State::Ready;
        emit SigReady();
    } else if (state == State::Ready) {
        if (++answered == answersOfASoundOne)
            losses = 0;
        emit SigAnswer(answer);
    }
}

void CodeHelper::TakeEnd()
{
    if (state == State::Missing || state == State::Off)
        return;
    state = State::Off;
    const int longest = static_cast<int>(std::size(restartDelaysMs)) - 1;
    again.start(restartDelaysMs[std::min(losses++, longest)]);
    emit SigLost();
}

void CodeHelper::BeMissing()
{
    if (state == State::Missing)
        return;
    state = State::Missing;
    emit SigMissing();
}
