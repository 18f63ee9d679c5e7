// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SavedTemplates.h"
#include "TemplateKeeper.h"
#include "WorkstationPaths.h"

#include <QObject>

#include <functional>

// The templates a new app may begin with: those that come with the workstation and those its authors saved,
// looked through before the editor reads them.
class TemplateFlow : public QObject
{
    Q_OBJECT

public:
    // kindOfApp: of the app that is open now.
    TemplateFlow(const WorkstationPaths& paths, const std::function<int()>& kindOfApp);

    // Puts the shipped ones where the others are, and looks for the first time.
    void Start();
    // Looks again, then calls back (see TemplateKeeper::LookThen).
    void LookThen(const TemplateKeeper::Looked& looked) { keeper.LookThen(looked); }
    // Tells the platform what the last look found fit; an editor that is opened next reads that.
    void Offer();

private:
    void Look();

    const WorkstationPaths paths;
    TemplateKeeper keeper;
    SavedTemplates saved;
};
