// SPDX-License-Identifier: Apache-2.0

#include "BrowserSandbox_p.h"

#include <QtGlobal>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
// Tried in a child, because a process cannot leave a name space again.
bool MayMakeNameSpaces()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
} // namespace

QString BrowserSandbox::Obstacle()
{
    if (qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        return QString();
    if (geteuid() == 0)
        return QStringLiteral("以管理员（root）身份运行时，内置浏览器无法安全地隔离网页。请用普通用户启动。");
    static const bool available = MayMakeNameSpaces();
    if (!available)
        return QStringLiteral("此系统不允许隔离网页进程（用户命名空间），内置浏览器无法启动。");
    return QString();
}
