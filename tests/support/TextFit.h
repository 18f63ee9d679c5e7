// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

class QWidget;

// Measures the texts that a window shows against the places they have.
namespace TextFit
{
// Each visible text that is cut, or that reaches beyond what it stands on, with the name of its widget. What
// can be scrolled to is not cut, and what is shortened with its whole text in a tool tip is not either.
QStringList CutTexts(const QWidget& window);
} // namespace TextFit
