// SPDX-License-Identifier: Apache-2.0

#include "RpaLogManager_p.h"

RpaLogManager::RpaLogManager() : source(std::make_unique<RpaLogDataSource>()) {}

RpaLogManager::~RpaLogManager() = default;

void RpaLogManager::Append(RpaLogLevel level, const QString& text, const QString& statementId, int line)
{
    source->Append(level, text, statementId, line);
}
