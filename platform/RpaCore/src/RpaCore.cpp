#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RobotExecuteInfo.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaCore/RpaSuperDir.h>
