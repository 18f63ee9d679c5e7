#include <RpaPackage/IPackageService.h>

IPackageService::IPackageService(QObject* parent) : QObject(parent) {}

IPackageService::~IPackageService() = default;
