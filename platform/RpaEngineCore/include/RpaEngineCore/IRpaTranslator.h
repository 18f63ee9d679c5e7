// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>

// Turns a process into what the engine executes.
class RPAENGINECORE_EXPORT IRpaTranslator
{
public:
    virtual ~IRpaTranslator();

    // Whether the process is a tree of statements to be translated (true) or program text that is run as it
    // stands.
    virtual void SetTranslateStatements(bool visual) = 0;

    // Whether statements report themselves while they run, for the marks in the visual editor.
    virtual void SetReportStatements(bool visual) = 0;
};
