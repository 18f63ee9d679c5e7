// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunFailure.h>
#include <RpaEngineCore/RpaRunSpan.h>

#include <QByteArray>

// Spans as bytes: a table of the texts, each once, then numbers. A hundred thousand are read within some tens
// of milliseconds. Bytes that are none are read as nothing.
namespace SpanBlock
{
QByteArray Pack(const QVector<RpaRunSpan>& spans);
QVector<RpaRunSpan> Unpack(const QByteArray& bytes);
QByteArray PackSums(const QVector<RpaRunSpanSum>& sums);
QVector<RpaRunSpanSum> UnpackSums(const QByteArray& bytes);
QByteArray PackFailure(const RpaRunFailure& failure);
RpaRunFailure UnpackFailure(const QByteArray& bytes);
} // namespace SpanBlock
