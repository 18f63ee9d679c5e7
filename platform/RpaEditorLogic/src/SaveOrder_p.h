#pragma once

#include "ServiceRoutes_p.h"

// What one save carries, on which revision, under which key. Taken from its request when it is made.
struct SaveOrder
{
    QString appId;
    QString versionId; // empty: a new version
    ServiceRoutes::VersionContent content;
    QByteArray key;
    int base = 0;
};
