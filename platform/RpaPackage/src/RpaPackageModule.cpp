#include "PackageService_p.h"

#include <RpaPackage/RpaPackageModule.h>

#include <QPointer>

class RpaPackageModule::Private
{
public:
    PackageService own;
    QPointer<IPackageService> service = &own;
};

RpaPackageModule* RpaPackageModule::Instance()
{
    static RpaPackageModule instance;
    return &instance;
}

RpaPackageModule::RpaPackageModule() : d(std::make_unique<Private>()) {}

RpaPackageModule::~RpaPackageModule() = default;

IPackageService* RpaPackageModule::GetService() const
{
    return d->service;
}

void RpaPackageModule::SetService(IPackageService* service)
{
    d->service = service;
}
