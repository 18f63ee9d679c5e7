// SPDX-License-Identifier: Apache-2.0

#include <RpaPackage/IPackageService.h>

IPackageService::IPackageService(QObject* parent) : QObject(parent) {}

IPackageService::~IPackageService() = default;
