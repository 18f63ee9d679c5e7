#pragma once

#include <WbBaseUI/WbBaseDialog.h>

class PackageService;
class RpaPackagePanel;

// The packages of the app that is open. Asks before edits are thrown away.
class PackageDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    PackageDialog(PackageService* service, QWidget* parent);
    ~PackageDialog() override;

    void reject() override;

private:
    RpaPackagePanel* panel;
};
