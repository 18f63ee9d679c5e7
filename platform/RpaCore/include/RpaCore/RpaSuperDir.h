// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

#include <QString>

// Folders of the workstation. Set by the workstation; an empty text means there is none.
class RPACORE_EXPORT RpaSuperDir
{
public:
    // The one of the process.
    static RpaSuperDir* Instance();

    // Folder whose files are offered as templates of a visual app / a program app.
    QString GetVisualTemplateDir() const { return visualTemplateDir; }
    QString GetProgramTemplateDir() const { return programTemplateDir; }
    void SetTemplateDirs(const QString& visualDir, const QString& programDir);

private:
    RpaSuperDir() = default;

    QString visualTemplateDir;
    QString programTemplateDir;
};
