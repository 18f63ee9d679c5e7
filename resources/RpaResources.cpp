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
