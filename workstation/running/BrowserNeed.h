// SPDX-License-Identifier: Apache-2.0

#pragma once

class RpaAppData;

// Whether the processes of an app work with web pages, so that running them takes a browser.
namespace BrowserNeed
{
bool Of(const RpaAppData& app);
}
