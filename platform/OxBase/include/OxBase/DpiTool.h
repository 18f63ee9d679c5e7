// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/OxBaseExport.h>

#include <QtGlobal>

class IDpiAdapter;

// Scales pixel lengths designed at 100 % to the scale of the screen in use.
class OXBASE_EXPORT DpiTool
{
public:
    // The length in pixels for the current scale, rounded to the nearest pixel; negative lengths keep their
    // sign.
    static int ScaleDefault(int length);

    // The current scale, 1.0 at 100 %. Range 0.5 to 4.0.
    static qreal GetScale();

    // Sets the scale (values outside the range are clamped) and calls AdjustForDpi of every registered
    // adapter when it changed. GUI thread only.
    static void SetScale(qreal scale);

    // An adapter registers to hear of scale changes and must unregister before it is destroyed. GUI thread
    // only.
    static void Register(IDpiAdapter* adapter);
    static void Unregister(IDpiAdapter* adapter);
};
