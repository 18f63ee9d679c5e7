// SPDX-License-Identifier: Apache-2.0

#include "ProcessGroupLinux_p.h"

#include <WbSystem/ChildProcess.h>
#include <WbSystem/CleanEnvironment.h>

#include <QStandardPaths>
#include <QUuid>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{
// A killed process needs milliseconds.
constexpr int endMs = 1000;
// A group without a namespace is looked for this often before it is given up: new processes may be born while
// the old ones are killed.
constexpr int sweepsAtMost = 50;
const QString markName = QStringLiteral("RPA_CHILD_ID");

bool HasNamespace()
{
    return !ProcessGroup::NamespaceCommand().isEmpty();
}

void KillMarked(const QByteArray& mark)
{
    for (int sweep = 0; sweep < sweepsAtMost; ++sweep) {
        const QVector<qint64> left = ProcessGroup::FindMarked(mark);
        if (left.isEmpty())
            return;
        ProcessGroup::KillAll(left);
    }
}
} // namespace

class ChildProcess::Private
{
public:
    qint64 memoryBytes = 0;
    QByteArray mark;
    int insider = -1; // the first process of the namespace, once it is being killed
};

ChildProcess::ChildProcess(QObject* parent) : QProcess(parent), d(std::make_unique<Private>())
{
    setProcessEnvironment(CleanEnvironment());
    connect(this, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, &ChildProcess::KillAll);
}

ChildProcess::~ChildProcess()
{
    if (state() != QProcess::NotRunning) {
        KillAll();
        // Reaped here, or QProcess would complain.
        waitForFinished(endMs);
    }
    // The namespace dies a little later than the process around it, and may still write into its folder.
    ProcessGroup::WaitForEnd(d->insider, endMs);
}

void ChildProcess::SetLimits(qint64 memoryBytes, int)
{
    d->memoryBytes = memoryBytes;
}

void ChildProcess::Start(const QString& program, const QStringList& arguments)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    d->mark = markName.toLatin1() + '=' + id.toLatin1();
    QProcessEnvironment environment = processEnvironment();
    environment.insert(markName, id);
    setProcessEnvironment(environment);

    // Only the system's own words for a missing program name it.
    const bool isThere = !QStandardPaths::findExecutable(program).isEmpty();
    const QStringList around = isThere ? ProcessGroup::NamespaceCommand() : QStringList();
    const QStringList words = around + QStringList{program} + arguments;
    start(words.first(), words.mid(1));
}

ChildProcess::Usage ChildProcess::Measure() const
{
    if (processId() == 0)
        return {};
    return ProcessGroup::Measure(HasNamespace() ? ProcessGroup::FindDescendants(processId())
                                                : ProcessGroup::FindMarked(d->mark));
}

// In a namespace the kernel does it; elsewhere by hand, and again for what was born meanwhile.
void ChildProcess::KillAll()
{
    if (HasNamespace() && d->insider < 0 && processId() > 0)
        d->insider = ProcessGroup::Watch(ProcessGroup::FindDescendants(processId()).value(1));
    if (state() != QProcess::NotRunning)
        kill();
    if (!HasNamespace() && !d->mark.isEmpty())
        KillMarked(d->mark);
}

void ChildProcess::setupChildProcess()
{
    // System calls only.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setsid();
    if (d->memoryBytes > 0) {
        const rlimit memory{static_cast<rlim_t>(d->memoryBytes), static_cast<rlim_t>(d->memoryBytes)};
        setrlimit(RLIMIT_AS, &memory);
    }
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
}
