#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
