#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
