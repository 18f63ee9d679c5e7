#pragma once

#include "RpaLogManager_p.h"
#include "RpaTranslatorSwitches_p.h"

#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>

class RpaEngineModule::Private
{
public:
    IBrowserEngine* browserEngine = nullptr;
    IAppParamEngine* paramEngine = nullptr;
    IAppTableEngine* tableEngine = nullptr;
    RpaHtmlNodeManager* htmlNodes = nullptr;
    RpaUiaNodeManager* uiaNodes = nullptr;
    ProcessDataManager* processData = nullptr;
    RpaAppRunTimeInfo* runTimeInfo = nullptr;

    RpaTranslatorSwitches translator;
    IRpaDebugger debugger;
    RpaLogManager log;
};
