// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugSession.h>

// Why a pane of a program that is not stopped shows nothing.
inline QString WhyEmpty(RpaDebugSession::State state, const QString& what)
{
    return state == RpaDebugSession::State::Running
               ? QStringLiteral("流程正在运行，停下后这里显示%1").arg(what)
               : QStringLiteral("没有正在运行的流程；运行到断点停下后，这里显示%1").arg(what);
}
