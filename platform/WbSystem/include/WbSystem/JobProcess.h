// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QProcess>

#include <memory>

// A child process in a job object of its own (Windows only): whatever it starts belongs to the job, cannot
// leave it, and dies with it when KillJob() is called, when this object goes or when this program ends,
// however it ends. The child inherits its three standard handles and nothing else.
//
// Used like QProcess; start() fails when the child cannot be put into the job.
class WBSYSTEM_EXPORT JobProcess : public QProcess
{
    Q_OBJECT

public:
    explicit JobProcess(QObject* parent = nullptr);
    // Kills the job.
    ~JobProcess() override;

    // Bounds that the system keeps for the job as a whole. Beyond memoryBytes an allocation fails; beyond
    // processes no further one starts. Before start().
    void SetLimits(qint64 memoryBytes, int processes);

    // Processes of the job that live now.
    int CountProcesses() const;
    // Most memory that the job has ever had committed, in bytes.
    qint64 GetPeakMemory() const;

    // Ends every process of the job; finished() tells it as a crash.
    void KillJob();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
