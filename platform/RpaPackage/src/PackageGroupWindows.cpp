// SPDX-License-Identifier: Apache-2.0

#include "PackageGroup_p.h"

#include <WbSystem/JobProcess.h>

std::unique_ptr<QProcess> PackageGroup::Make()
{
    return std::make_unique<JobProcess>();
}

void PackageGroup::Kill(QProcess& process)
{
    static_cast<JobProcess&>(process).KillJob();
}

void PackageGroup::SetVariables(QProcessEnvironment& environment)
{
    // Spelled as Python's os.devnull: pip compares the two.
    environment.insert(QStringLiteral("PIP_CONFIG_FILE"), QStringLiteral("nul"));
    environment.insert(QStringLiteral("PYTHONUTF8"), QStringLiteral("1"));
}
