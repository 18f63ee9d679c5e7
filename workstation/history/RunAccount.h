// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QPair>
#include <QString>
#include <QVector>

// A kept run as text, for somebody who was not there.
namespace RunAccount
{
// Title and text of each part that there is: parameters, packages, calls, variables, last calls of the outside,
// log.
QVector<QPair<QString, QString>> Parts(const RpaRunRecord& run, const QVector<RpaLogLine>& log,
                                       const RpaRunDetails& details);
} // namespace RunAccount
