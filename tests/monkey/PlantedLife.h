// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Plant.h"

#include <QObject>

#include <functional>

// Plants a fault into the workstation of its process, where the monkey comes across it.
class PlantedLife : public QObject
{
    Q_OBJECT

public:
    // tell: hears once that the fault is in, before it acts.
    PlantedLife(Plant plant, std::function<void()> tell);

    // The monkey has done something.
    void Acted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Tell();
    void DeleteAWidgetInUse();

    const Plant plant;
    std::function<void()> tell;
    int acts = 0;
};
