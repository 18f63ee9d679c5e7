// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

class PackageService;
class RpaPackagePanel;

// The packages of the app that is open, and where they may come from. Asks before edits are thrown away.
class PackageDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // wheelFolder: the user's own folder of wheels; empty for none.
    PackageDialog(PackageService* service, const QString& wheelFolder, QWidget* parent);

    void reject() override;

signals:
    // The user named another folder of wheels; empty: none any more.
    void SigWheelFolderChosen(const QString& folder);

private:
    RpaPackagePanel* panel;
};
