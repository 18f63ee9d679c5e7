// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Handed_p.h"
#include "RpaEngineRunner_p.h"
#include "RpaLogManager_p.h"
#include "RpaTranslatorSwitches_p.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbBrowserLite/IBrowserEngine.h>

class RpaEngineModule::Private
{
public:
    void Report(const QList<RpaCheckInfo>& findings);

    Handed<IBrowserEngine> browserEngine;
    Handed<IAppParamEngine> paramEngine;
    Handed<IAppTableEngine> tableEngine;
    Handed<RpaHtmlNodeManager> htmlNodes;
    Handed<RpaUiaNodeManager> uiaNodes;
    Handed<ProcessDataManager> processData;
    RpaAppRunTimeInfo* runTimeInfo = nullptr; // a plain record; read only while a run is being started
    QStringList packageFolders;

    RpaTranslatorSwitches translator;
    IRpaDebugger debugger;
    RpaLogManager log;
    RpaDebugSession session;
    RpaEngineRunner runner{log, debugger, session};

    RpaRunParts GetRunParts() const
    {
        return {browserEngine,
                paramEngine,
                tableEngine,
                htmlNodes,
                runTimeInfo ? runTimeInfo->GetAppId() : QString(),
                runTimeInfo ? runTimeInfo->GetEnvironment() : QString(),
                packageFolders};
    }
};
