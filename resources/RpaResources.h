// SPDX-License-Identifier: Apache-2.0

#pragma once

// The resource bundle of the application: the images under ":/images/rpa" that the editor expects its host to
// have.
namespace RpaResources
{
// Makes the images available; a program calls it once, before it builds its first window. Further calls do
// nothing.
void Init();
} // namespace RpaResources
