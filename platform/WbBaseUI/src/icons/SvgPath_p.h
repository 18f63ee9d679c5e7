// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPainterPath>
#include <QString>

// The path that the text of an SVG "d" attribute describes; commands M L H V C S Q A Z in both cases. Reading
// stops at the first thing that is none of them.
QPainterPath ParseSvgPath(const QString& text);
