// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>
#include <RpaProcessData/RpaCheckInfo.h>

#include <QObject>

// What the engine tells editors about the statements of a process.
class RPAENGINECORE_EXPORT IRpaDebugger : public QObject
{
    Q_OBJECT

public:
    explicit IRpaDebugger(QObject* parent = nullptr);
    ~IRpaDebugger() override;

signals:
    // Findings of a check before a run, or where a run failed; an empty list takes earlier marks away.
    void SigCheckNode(const QList<RpaCheckInfo>& list);
};
