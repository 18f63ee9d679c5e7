#include <WbCore/IMonitorSystem.h>
#include <WbCore/WbGlobalData.h>
