#pragma once

#include <RpaPackage/IPackageService.h>

// Keeps the package list of the app being edited.
class PackageService : public IPackageService
{
    Q_OBJECT

public:
    using IPackageService::IPackageService;

    void Install(const QString& json) override;
    void Reset(const QString& json) override;

    QString GetConfiguration() const { return configuration; }

private:
    QString configuration; // JSON text of RpaPackageInfo
};
