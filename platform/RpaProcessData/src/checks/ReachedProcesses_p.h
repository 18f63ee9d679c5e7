// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QVector>

class ProcessDataManager;
class RpaProcess;

// The process and every process that its enabled statements run, directly or not.
QVector<const RpaProcess*> ReachedFrom(const ProcessDataManager& processes, const QString& processName);
