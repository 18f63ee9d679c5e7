// SPDX-License-Identifier: Apache-2.0

#include "PlantedLife.h"

#include "MonkeySight.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QSemaphore>

#include <utility>

namespace
{
constexpr int actsBeforeHang = 100;
}

PlantedLife::PlantedLife(Plant fault, std::function<void()> teller) : plant(fault), tell(std::move(teller))
{
    if (plant != Plant::None)
        QApplication::instance()->installEventFilter(this);
}

void PlantedLife::Acted()
{
    ++acts;
    if (plant == Plant::DeadWidget) {
        DeleteAWidgetInUse();
    } else if (plant == Plant::Hang && acts == actsBeforeHang) {
        Tell();
        QSemaphore().acquire(); // nobody releases it
    }
}

// Of each editor that is opened: the one before may have been left without having missed it.
void PlantedLife::DeleteAWidgetInUse()
{
    if (auto* versions = MonkeySight::Find<QComboBox>("version_combo")) {
        Tell();
        delete versions;
    }
}

void PlantedLife::Tell()
{
    if (tell)
        std::exchange(tell, nullptr)();
}

bool PlantedLife::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) {
        // The shortest way to where the fault is: a monkey that signed out may be long in coming back.
        return watched->objectName() == QLatin1String("buttonSettings") ||
               watched->objectName() == QLatin1String("buttonSignOut");
    }
    const auto* window = qobject_cast<QWidget*>(watched);
    if (plant != Plant::StuckWindow || event->type() != QEvent::Close || !window ||
        !window->inherits("MainWindow"))
        return false;
    Tell();
    event->ignore();
    return true;
}
