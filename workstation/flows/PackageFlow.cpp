// SPDX-License-Identifier: Apache-2.0

#include "PackageFlow.h"

#include "EditorPage.h"
#include "MainWindow.h"
#include "PackageDialog.h"
#include "WorkstationSettings.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>

PackageFlow::PackageFlow(const WorkstationPaths& places, WorkstationSettings* store, const EditorPage* page,
                         MainWindow* mainWindow)
    : paths(places), settings(store), window(mainWindow),
      packages(RpaPackageModule::Instance()->GetBuiltIn()), preparation(packages)
{
    ConnectEngine();
    connect(settings, &WorkstationSettings::SigWheelFolderChanged, this, &PackageFlow::TellFolders);
    TellFolders();
    connect(page, &EditorPage::SigClosed, &preparation, &PackagePreparation::Leave);
    connect(window, &MainWindow::SigPackages, this, &PackageFlow::Show);
}

void PackageFlow::ConnectEngine()
{
    connect(packages, &PackageService::SigPackageFoldersChanged, this,
            [this] { RpaEngineModule::Instance()->SetPackageFolders(packages->GetPackageFolders()); });
    connect(packages, &PackageService::SigOutput, this, [](const QString& line) {
        RpaEngineModule::Instance()->GetLogManager()->Append(RpaLogLevel::Debug, line);
    });
}

void PackageFlow::Show()
{
    auto* dialog = new PackageDialog(packages, settings->GetWheelFolder(), window);
    connect(dialog, &PackageDialog::SigWheelFolderChosen, settings, &WorkstationSettings::SetWheelFolder);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void PackageFlow::TellFolders()
{
    PackageSettings places;
    places.dataFolder = paths.packageDir;
    places.wheelFolders = QStringList{paths.wheelDir};
    if (!settings->GetWheelFolder().isEmpty())
        places.wheelFolders.append(settings->GetWheelFolder());
    packages->SetSettings(places);
}
