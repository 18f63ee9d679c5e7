// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QString>

// A kept run in the author's words.
namespace RunWords
{
QString Result(RpaRunResult result);
// "34 毫秒", "1.4 秒", "12 秒", "3 分 20 秒", "1 小时 5 分"; empty while it runs.
QString Duration(const RpaRunRecord& run);
// How it ended, and where and why it failed.
QString Outcome(const RpaRunRecord& run);
// When, who, from where, with which parameters and packages: a line each.
QString Facts(const RpaRunRecord& run, DateLanguage language);
// A line of the log each; what is technical is left out.
QString Log(const RpaRunRecord& run, const QVector<RpaLogLine>& lines);
} // namespace RunWords
