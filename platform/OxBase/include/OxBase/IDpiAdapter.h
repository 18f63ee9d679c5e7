// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/OxBaseExport.h>

// Implemented by widgets whose margins, spacings or icon sizes are given in pixels at 100 % and must be
// set again when the window moves to a screen of another scale.
class OXBASE_EXPORT IDpiAdapter
{
public:
    virtual ~IDpiAdapter();

    // Applies all lengths again through DpiTool. Called on the GUI thread after the scale has changed.
    virtual void AdjustForDpi() = 0;
};
