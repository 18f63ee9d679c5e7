// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QStringList>

// The texts that the log of the engine holds.
inline QStringList RunLog()
{
    QStringList texts;
    const auto lines = RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines();
    for (const RpaLogLine& line : lines)
        texts << line.text;
    return texts;
}
