// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaSuperDir.h>

RpaSuperDir* RpaSuperDir::Instance()
{
    static RpaSuperDir instance;
    return &instance;
}

void RpaSuperDir::SetTemplateDirs(const QString& visualDir, const QString& programDir)
{
    visualTemplateDir = visualDir;
    programTemplateDir = programDir;
}
