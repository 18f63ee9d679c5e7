// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunSpan.h>

#include <QString>

// Calls of a run in the author's words.
namespace SpanWords
{
QString Kind(RpaSpanKind kind);
// Of microseconds: "340 微秒", "12 毫秒", "1.4 秒", "3 分 20 秒".
QString Time(qint64 microseconds);
// "主流程 第 3 步 读取文本文件", "主流程 第 12 行 open(path)".
QString Place(const RpaRunPlace& place);
// One line each: where, what with which input, when and how long, what came of it.
QString Span(const RpaRunSpan& span);
QString Sum(const RpaRunSpanSum& sum);
} // namespace SpanWords
