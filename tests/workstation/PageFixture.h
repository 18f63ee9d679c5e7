// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QWidget>

// The part of a page that has this name.
template <typename Widget>
Widget* Child(QWidget& page, const char* objectName)
{
    auto* found = page.findChild<Widget*>(QLatin1String(objectName));
    Q_ASSERT(found);
    return found;
}

// Presses the button that has this name.
void Press(QWidget& page, const char* objectName);

// Pages of the workstation, shown light.
class PageFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
};
