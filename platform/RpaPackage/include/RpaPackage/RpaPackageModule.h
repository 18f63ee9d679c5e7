// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/RpaPackageExport.h>

#include <memory>

class IPackageService;
class PackageService;

// Where the engine and the editor find the package service. GUI thread only.
class RPAPACKAGE_EXPORT RpaPackageModule
{
public:
    // The one of the process.
    static RpaPackageModule* Instance();
    ~RpaPackageModule();

    // Null when packages cannot be installed here.
    IPackageService* GetService() const;

    // Replaces the service; null takes it away. Ownership stays with the caller. Used by a workstation that
    // has its own, and by tests.
    void SetService(IPackageService* service);

    // The platform's own service, whether or not it was replaced; never null.
    PackageService* GetBuiltIn() const;

private:
    RpaPackageModule();

    class Private;
    const std::unique_ptr<Private> d;
};
