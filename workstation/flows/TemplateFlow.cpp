// SPDX-License-Identifier: Apache-2.0

#include "TemplateFlow.h"

#include "AppRecord.h"
#include "DraftController.h"
#include "ShippedTemplates.h"

#include <RpaCore/RpaSuperDir.h>
#include <WbBaseUI/WbToast.h>

TemplateFlow::TemplateFlow(const WorkstationPaths& places, const std::function<int()>& kindOfApp)
    : paths(places), keeper({places.visualTemplateDir, places.programTemplateDir}, places.dataDir),
      saved(places.dataDir + QStringLiteral("/saved-templates.json"), kindOfApp)
{
    connect(&saved, &SavedTemplates::SigSaved, this, &TemplateFlow::Look);
    connect(&keeper, &TemplateKeeper::SigLooked, this, &TemplateFlow::Offer);
    connect(&keeper, &TemplateKeeper::SigProblem, this,
            [](const QString& text) { WbToast::Show(text, ToastWarning); });
    connect(&keeper, &TemplateKeeper::SigContentLost, this, [] {
        WbToast::Show(QStringLiteral("所选模板的内容已无法读取，应用从空白内容开始"), ToastWarning);
    });
}

void TemplateFlow::Start()
{
    ShippedTemplates::Install(paths.visualTemplateDir, paths.programTemplateDir, paths.dataDir);
    Offer();
    Look();
}

void TemplateFlow::Look()
{
    keeper.SetOthers(paths.visualTemplateDir, saved.GetFiles(AppKindVisual));
    keeper.SetOthers(paths.programTemplateDir, saved.GetFiles(AppKindProgram));
    keeper.Look();
}

void TemplateFlow::Offer()
{
    if (DraftController::RestoresStart()) {
        // Work that goes on needs no template to begin with.
        RpaSuperDir::Instance()->SetTemplateDirs(QString(), QString());
        return;
    }
    RpaSuperDir::Instance()->SetTemplateDirs(keeper.GetFitFolder(paths.visualTemplateDir),
                                             keeper.GetFitFolder(paths.programTemplateDir));
}
