// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class WorkstationSettings;

// How everything looks, as the settings say; follows them at once. Made before the first widget.
class Appearance : public QObject
{
    Q_OBJECT

public:
    // Not owned.
    explicit Appearance(const WorkstationSettings* settings);

private:
    void ApplyTheme();
    void ApplyScale();

    const WorkstationSettings* const settings;
    const bool systemIsDark;
};
