// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PlaceList_p.h"

#include <RpaProcessData/RpaStatementChange.h>

class ProcessDataManager;
class RpaAppData;
struct RpaSearchPlace;

// Places as authors read them.
namespace PlaceTexts
{
// Without what would stand there.
ShownPlace Of(const RpaSearchPlace& place);

// A part of a text, on one line, that shows what stands at begin.
QString Excerpt(const QString& text, int begin);

// Statements as their cards tell of them, before and after; those that do not read otherwise show the
// argument that changes. In the order of the app.
QVector<ShownPlace> OfChanges(const ProcessDataManager& manager, const QVector<RpaStatementChange>& changes);

// What runs a process, statements and tools of pages, before and after it gets another name.
QVector<ShownPlace> OfProcess(const RpaAppData& app, const QString& name, const QString& newName);
} // namespace PlaceTexts
