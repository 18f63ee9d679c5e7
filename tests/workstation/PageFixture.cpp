// SPDX-License-Identifier: Apache-2.0

#include "PageFixture.h"

#include <WbBaseUI/WbTheme.h>

#include <QAbstractButton>
#include <QTest>

void Press(QWidget& page, const char* objectName)
{
    QTest::mouseClick(Child<QAbstractButton>(page, objectName), Qt::LeftButton);
}

void PageFixture::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}
