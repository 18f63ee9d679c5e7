// SPDX-License-Identifier: Apache-2.0

#include "PackageGroup_p.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

class GroupProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        // Between fork and exec: system calls only.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setsid();
    }
};

} // namespace

std::unique_ptr<QProcess> PackageGroup::Make()
{
    return std::make_unique<GroupProcess>();
}

void PackageGroup::Kill(QProcess& process)
{
    // pip works in a child of its own; both are in the group that was made at the start.
    if (process.processId() > 0)
        kill(static_cast<pid_t>(-process.processId()), SIGKILL);
    process.kill();
}

void PackageGroup::SetVariables(QProcessEnvironment& environment)
{
    environment.insert(QStringLiteral("PIP_CONFIG_FILE"), QStringLiteral("/dev/null"));
}
