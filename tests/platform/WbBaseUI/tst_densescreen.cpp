// SPDX-License-Identifier: Apache-2.0

// On a screen that is drawn at 150 %; the scale comes from the environment of this test.
#include "TestApp.h"

#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>

#include <QtTest>

class TestDenseScreen : public QObject
{
    Q_OBJECT

private slots:
    void drawsPicturesSharpInBothSchemes_data();
    void drawsPicturesSharpInBothSchemes();
};

void TestDenseScreen::drawsPicturesSharpInBothSchemes_data()
{
    QTest::addColumn<int>("scheme");

    QTest::newRow("light") << int(WbTheme::Scheme::Light);
    QTest::newRow("dark") << int(WbTheme::Scheme::Dark);
}

void TestDenseScreen::drawsPicturesSharpInBothSchemes()
{
    QFETCH(int, scheme);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    WbIconPicture picture(QStringLiteral("package"), 56, WbColor::TextDisabled);
    picture.resize(56, 56);
    QCOMPARE(picture.devicePixelRatioF(), 1.5);
    WbTheme::Instance()->Apply(static_cast<WbTheme::Scheme>(scheme));
    QImage shown(84, 84, QImage::Format_ARGB32_Premultiplied);
    shown.setDevicePixelRatio(picture.devicePixelRatioF());
    shown.fill(Qt::transparent);

    picture.render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);

    const QPixmap sharp = WbIcons::Pixmap(QStringLiteral("package"), 56, WbColor::TextDisabled, 1.5);
    QCOMPARE(shown, sharp.toImage().convertToFormat(shown.format()));
}

RPA_TEST_MAIN(TestDenseScreen)

#include "tst_densescreen.moc"
