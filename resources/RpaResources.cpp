// SPDX-License-Identifier: Apache-2.0

#include "RpaResources.h"

#include <QtGlobal>

// The macro below may not stand inside a namespace.
static void InitImages()
{
    Q_INIT_RESOURCE(rpa_images);
}

void RpaResources::Init()
{
    InitImages();
}
