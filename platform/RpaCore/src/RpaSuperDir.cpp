// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaSuperDir.h>

RpaSuperDir* RpaSuperDir::Instance()
{
    static RpaSuperDir instance;
    return &instance;
}

QString RpaSuperDir::GetVisualTemplateDir() const
{
    return visualTemplateDir;
}

QString RpaSuperDir::GetProgramTemplateDir() const
{
    return programTemplateDir;
}

void RpaSuperDir::SetTemplateDirs(const QString& visualDir, const QString& programDir)
{
    visualTemplateDir = visualDir;
    programTemplateDir = programDir;
}
