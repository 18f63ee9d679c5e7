// SPDX-License-Identifier: Apache-2.0

#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>

#include <QCoreApplication>
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

RpaPackageModule::RpaPackageModule() : d(std::make_unique<Private>())
{
    // The module outlives the application object, its child processes must not.
    qAddPostRoutine([] { Instance()->d->own.Shutdown(); });
}

RpaPackageModule::~RpaPackageModule() = default;

IPackageService* RpaPackageModule::GetService() const
{
    return d->service;
}

void RpaPackageModule::SetService(IPackageService* service)
{
    d->service = service;
}

PackageService* RpaPackageModule::GetBuiltIn() const
{
    return &d->own;
}
