// SPDX-License-Identifier: Apache-2.0

#include "RpaProcessTranslator_p.h"

#include <RpaEngineModule/RpaProcessPython.h>

RpaProcessPython RpaProcessPython::Of(const ProcessDataManager& processes, const QString& processName)
{
    const RpaProgram program = RpaProcessTranslator(processes).Translate(processName);
    RpaProcessPython python;
    python.source = program.source;
    python.origins.reserve(program.originByLine.size());
    for (const RpaProgramOrigin& origin : program.originByLine)
        python.origins.append({origin.processName, origin.statementId});
    return python;
}
