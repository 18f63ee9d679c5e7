// SPDX-License-Identifier: Apache-2.0

#include "VersionComboFixture.h"

#include "RpaVersionItem.h"

#include <QLineEdit>
#include <QListWidget>
#include <QWindow>
#include <QtTest>

void VersionComboFixture::init()
{
    combo = std::make_unique<RpaVersionCombo>();
    combo->resize(200, 30);
    list = qobject_cast<QListWidget*>(combo->view());
    combo->show();
}

void VersionComboFixture::cleanup()
{
    combo.reset();
}

void VersionComboFixture::Fill(int rows)
{
    for (int i = 0; i < rows; ++i)
        combo->AddRow(Text("版本%1").arg(i), Text("说明%1").arg(i), QStringLiteral("id%1").arg(i), 1 + i % 3);
}

RpaVersionItem* VersionComboFixture::Row(int index) const
{
    return qobject_cast<RpaVersionItem*>(list->itemWidget(list->item(index)));
}

void VersionComboFixture::PressRow(int index) const
{
    QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(index)).center());
}

void VersionComboFixture::PressFace() const
{
    QTest::mousePress(combo->lineEdit(), Qt::LeftButton);
}

void VersionComboFixture::ClickFace() const
{
    const QPoint place = combo->mapTo(combo->window(), combo->lineEdit()->geometry().center());
    QTest::mouseClick(combo->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
}

bool VersionComboFixture::IsPopupOpen() const
{
    return list->isVisible();
}
