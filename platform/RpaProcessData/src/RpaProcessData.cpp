#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessData/RpaPackageInfo.h>
