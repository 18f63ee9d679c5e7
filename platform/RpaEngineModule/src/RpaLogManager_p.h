// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaLogDataSource_p.h"

#include <memory>

// The engine's own log.
class RpaLogManager : public IRpaLogManager
{
public:
    RpaLogManager();
    ~RpaLogManager() override;

    IRpaLogDataSource* GetLogDataSource() const override { return source.get(); }
    void Append(RpaLogLevel level, const QString& text, const QString& statementId, int line) override;

private:
    const std::unique_ptr<RpaLogDataSource> source;
};
