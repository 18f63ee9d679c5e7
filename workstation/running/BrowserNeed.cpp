// SPDX-License-Identifier: Apache-2.0

#include "BrowserNeed.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{
// How generated and written programs call the browser alike.
const QString browserCall = QStringLiteral("rpa.browser_");

bool NeedsBrowser(const RpaProcess& process)
{
    bool needed = process.GetProgramText().contains(browserCall);
    process.ForEach([&needed](const RpaStatementNode& statement) {
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(statement.GetCommand());
        needed = needed || (command && command->pythonTemplate.contains(browserCall));
        for (const QString& text : statement.GetValues().arguments)
            needed = needed || text.contains(browserCall);
    });
    return needed;
}
} // namespace

bool BrowserNeed::Of(const RpaAppData& app)
{
    const ProcessDataManager* processes = app.GetProcessDataManager();
    for (int i = 0; i < processes->GetCount(); ++i)
        if (NeedsBrowser(*processes->GetProcess(i)))
            return true;
    return false;
}
