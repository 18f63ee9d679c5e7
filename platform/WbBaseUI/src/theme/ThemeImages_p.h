// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbTheme.h>

#include <QTemporaryDir>

// Style sheets can name pictures by file only. This class writes the few icons they need, in the colours of
// the scheme and the size of the screen, into a private folder that goes with the process.
class ThemeImages
{
public:
    // A path for url(), or an empty string for an unknown icon or colour or a folder that cannot be written.
    QString PathFor(const QString& icon, const QString& colorName, int size, WbTheme::Scheme scheme);

private:
    QTemporaryDir folder;
};
