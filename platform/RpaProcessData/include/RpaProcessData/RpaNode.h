// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QByteArray>
#include <QMap>
#include <QMetaType>
#include <QString>

// A captured element of a page or of a desktop application: how to find it again.
struct RPAPROCESSDATA_EXPORT RpaNode
{
    QString id;   // stable; what statements refer to
    QString name; // shown to the author; unique in its store

    // Elements of web pages.
    QString pageUrl;
    QString css;
    QString xpath;

    // Elements of desktop applications.
    QString application;
    QString window;
    QString path; // roles and names from the window down, separated by '/'

    // As captured: what the selectors find is believed only when it agrees with them.
    QMap<QString, QString> attributes;
    QByteArray unknown; // members written by a newer client, kept as they came

    // Of everything, the foreign members included.
    bool operator==(const RpaNode& other) const;
    bool operator!=(const RpaNode& other) const { return !(*this == other); }
};

Q_DECLARE_METATYPE(RpaNode)
