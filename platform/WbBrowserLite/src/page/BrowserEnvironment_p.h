// SPDX-License-Identifier: Apache-2.0

#pragma once

// What the web engine reads from the environment of the process.
namespace BrowserEnvironment
{
// A page must not be opened to a debugger from outside.
void RefuseDebuggers();
} // namespace BrowserEnvironment
