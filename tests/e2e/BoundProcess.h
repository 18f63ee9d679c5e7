// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

// A child process that dies with the thread that starts it: the tour may die at any step.
class BoundProcess : public QProcess
{
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};
