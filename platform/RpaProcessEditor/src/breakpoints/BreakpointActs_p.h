// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"

class QPoint;
class QWidget;

// What authors do with the breakpoint of a place, in gutters and lists.
namespace BreakpointActs
{
// "主流程 第 3 行".
QString PlaceText(const RpaDebugPlace& place);
// Asks for its terms; one that is not there yet is made.
void Edit(const QSharedPointer<AppBreakpoints>& list, const RpaDebugPlace& place, QWidget* parent);
void ShowMenu(const QSharedPointer<AppBreakpoints>& list, const RpaDebugPlace& place, QWidget* parent,
              const QPoint& position);
} // namespace BreakpointActs
