// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// Whether the web engine may start. It ends the whole program where it finds no sandbox for its pages, so it
// must not even be tried there.
namespace BrowserSandbox
{
// Empty when the engine may start, else why not, for the author.
QString Obstacle();
} // namespace BrowserSandbox
