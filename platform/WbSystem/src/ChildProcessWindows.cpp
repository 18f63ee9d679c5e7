// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/ChildProcess.h>
#include <WbSystem/CleanEnvironment.h>

#include <QByteArray>

#include <windows.h>
#include <algorithm>
#include <vector>

namespace
{

// What QProcess takes for "killed".
constexpr UINT killedExitCode = 0xf291;
// What passes a bound in small steps is ended by who measures, with words; what would pass it in one leap fails in
// the child.
constexpr qint64 memorySlackBytes = qint64(128) * 1024 * 1024;
constexpr int processSlack = 32;

JOBOBJECT_EXTENDED_LIMIT_INFORMATION LimitsOf(HANDLE job)
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    QueryInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits, nullptr);
    return limits;
}

void SetLimitsOf(HANDLE job, JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits)
{
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

// What a child is told about its handles and its job at birth; must outlive the call that makes it.
class BirthAttributes
{
public:
    ~BirthAttributes() { Clear(); }

    // False when the system refuses one of them.
    bool Fill(HANDLE givenJob, const STARTUPINFOW& startup)
    {
        Clear();
        info = {};
        info.StartupInfo = startup;
        info.StartupInfo.cb = sizeof info;
        job = givenJob;
        CollectHandles();
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 2, 0, &size);
        memory.resize(static_cast<int>(size));
        auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
        if (!InitializeProcThreadAttributeList(list, 2, 0, &size))
            return false;
        info.lpAttributeList = list;
        return UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &job, sizeof job, nullptr,
                                         nullptr) &&
               UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                         handles.size() * sizeof(HANDLE), nullptr, nullptr);
    }

    STARTUPINFOW* GetStartupInfo() { return &info.StartupInfo; }

private:
    void Clear()
    {
        if (info.lpAttributeList)
            DeleteProcThreadAttributeList(info.lpAttributeList);
        info.lpAttributeList = nullptr;
    }

    // Each once: the system refuses a list that names one twice.
    void CollectHandles()
    {
        handles.clear();
        const STARTUPINFOW& standard = info.StartupInfo;
        for (const HANDLE handle : {standard.hStdInput, standard.hStdOutput, standard.hStdError}) {
            const bool isKnown = std::find(handles.begin(), handles.end(), handle) != handles.end();
            if (handle && handle != INVALID_HANDLE_VALUE && !isKnown)
                handles.push_back(handle);
        }
    }

    STARTUPINFOEXW info{};
    QByteArray memory;
    HANDLE job = nullptr;
    std::vector<HANDLE> handles;
};

} // namespace

class ChildProcess::Private
{
public:
    Private() : job(CreateJobObjectW(nullptr, nullptr))
    {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags =
            JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
        SetLimitsOf(job, limits);
    }
    ~Private() { CloseHandle(job); }

    // In the job from its first instruction on: one that is assigned later may have started others before.
    void Prepare(QProcess::CreateProcessArguments* arguments)
    {
        if (!birth.Fill(job, *arguments->startupInfo))
            arguments->arguments[0] = L'\0'; // no child at all rather than one outside the job
        arguments->startupInfo = birth.GetStartupInfo();
        arguments->flags |= EXTENDED_STARTUPINFO_PRESENT;
    }

    const HANDLE job;
    BirthAttributes birth;
};

ChildProcess::ChildProcess(QObject* parent) : QProcess(parent), d(std::make_unique<Private>())
{
    setProcessEnvironment(CleanEnvironment());
    setCreateProcessArgumentsModifier(
        [this](QProcess::CreateProcessArguments* arguments) { d->Prepare(arguments); });
    connect(this, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, &ChildProcess::KillAll);
}

ChildProcess::~ChildProcess()
{
    KillAll();
    // Reaped here, or QProcess would complain; a killed process needs milliseconds.
    if (state() != QProcess::NotRunning)
        waitForFinished(1000);
}

void ChildProcess::SetLimits(qint64 memoryBytes, int processes)
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = LimitsOf(d->job);
    limits.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_JOB_MEMORY | JOB_OBJECT_LIMIT_ACTIVE_PROCESS;
    limits.JobMemoryLimit = static_cast<SIZE_T>(memoryBytes + memorySlackBytes);
    limits.BasicLimitInformation.ActiveProcessLimit = static_cast<DWORD>(processes + processSlack);
    SetLimitsOf(d->job, limits);
}

void ChildProcess::Start(const QString& program, const QStringList& arguments)
{
    start(program, arguments);
}

ChildProcess::Usage ChildProcess::Measure() const
{
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION counts{};
    QueryInformationJobObject(d->job, JobObjectBasicAccountingInformation, &counts, sizeof counts, nullptr);
    return {static_cast<int>(counts.ActiveProcesses),
            static_cast<qint64>(LimitsOf(d->job).PeakJobMemoryUsed)};
}

void ChildProcess::KillAll()
{
    TerminateJobObject(d->job, killedExitCode);
}

void ChildProcess::setupChildProcess() {}
