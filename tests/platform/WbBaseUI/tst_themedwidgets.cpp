// SPDX-License-Identifier: Apache-2.0

#include "ColorContrast.h"
#include "TestApp.h"

#include <WbBaseUI/RpaTabBar.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbTheme.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QTabBar>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

namespace
{
QImage Picture(QWidget& widget)
{
    return widget.grab().toImage();
}

// Of anything that is seen there.
qreal BestContrast(const QImage& image, const QColor& ground)
{
    qreal best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            best = qMax(best, ColorContrast(image.pixelColor(x, y), ground));
    return best;
}

// Where the text in the middle begins; behind the frame.
int FirstInk(const QImage& image, const QColor& ground)
{
    constexpr int frame = 3;
    for (int x = frame; x < image.width(); ++x)
        for (int y = image.height() / 4; y < image.height() * 3 / 4; ++y)
            if (ColorContrast(image.pixelColor(x, y), ground) > 2)
                return x;
    return -1;
}
} // namespace

// What the style sheet makes of widgets, measured on the screen.
class TestThemedWidgets : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aHeaderEndsWithTheFrame();
    void aComboBoxBeginsWhereAFieldBegins();
    void aBoxThatStandsInACellIsAsHighAsAnywhere();
    void scrollArrowsOfTabsAreSeen_data();
    void scrollArrowsOfTabsAreSeen();
    void aBarOfPagesKeepsItsDistance();
};

void TestThemedWidgets::init()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void TestThemedWidgets::aHeaderEndsWithTheFrame()
{
    QTableWidget table(1, 2);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setStretchLastSection(true);
    table.resize(300, 160);
    table.show();

    const QImage picture = Picture(table);
    const int y = table.horizontalHeader()->height() / 4;

    const QColor line = WbTheme::Instance()->Color(WbColor::Border);
    QCOMPARE(picture.pixelColor(picture.width() - 1, y), line);
    QVERIFY(picture.pixelColor(picture.width() - 2, y) != line);
    const int between = table.columnWidth(0); // behind the frame on the left
    QCOMPARE(picture.pixelColor(between, y), line);
}

void TestThemedWidgets::aComboBoxBeginsWhereAFieldBegins()
{
    const QString text = QStringLiteral("目");
    WbComboBox combo;
    combo.addItem(text);
    WbComboBox editable;
    editable.setEditable(true);
    editable.addItem(text);
    WbLineEdit field;
    field.setText(text);
    const QColor ground = WbTheme::Instance()->Color(WbColor::Field);
    const auto begin = [&ground](QWidget& widget) {
        widget.resize(160, widget.sizeHint().height());
        widget.ensurePolished();
        return FirstInk(Picture(widget), ground);
    };

    QVERIFY(begin(field) > 0);
    QCOMPARE(begin(combo), begin(field));
    QCOMPARE(begin(editable), begin(field));
}

void TestThemedWidgets::aBoxThatStandsInACellIsAsHighAsAnywhere()
{
    WbComboBox free;
    free.ensurePolished();
    QTableWidget table(1, 1);
    auto* place = new QWidget;
    auto* box = new WbComboBox;
    (new QHBoxLayout(place))->addWidget(box);
    table.setCellWidget(0, 0, place);
    table.show();
    box->ensurePolished();

    QCOMPARE(box->sizeHint().height(), free.sizeHint().height());
}

void TestThemedWidgets::scrollArrowsOfTabsAreSeen_data()
{
    QTest::addColumn<int>("scheme");
    QTest::newRow("light") << int(WbTheme::Scheme::Light);
    QTest::newRow("dark") << int(WbTheme::Scheme::Dark);
}

void TestThemedWidgets::scrollArrowsOfTabsAreSeen()
{
    QFETCH(int, scheme);
    WbTheme::Instance()->Apply(WbTheme::Scheme(scheme));
    QTabBar bar;
    for (int i = 0; i < 9; ++i)
        bar.addTab(QStringLiteral("流程%1").arg(i));
    bar.setCurrentIndex(4);
    bar.resize(240, bar.sizeHint().height());
    bar.show();

    const QColor ground = WbTheme::Instance()->Color(WbColor::Window);
    int seen = 0;
    for (QToolButton* arrow : bar.findChildren<QToolButton*>()) {
        if (!arrow->isVisible() || !arrow->isEnabled())
            continue;
        ++seen;
        const qreal contrast = BestContrast(Picture(*arrow), ground);
        QVERIFY2(contrast >= 4.5, qPrintable(QString::number(contrast)));
    }
    QCOMPARE(seen, 2);
}

void TestThemedWidgets::aBarOfPagesKeepsItsDistance()
{
    QWidget page;
    RpaTabBar bar(&page);
    bar.Initialize({QStringLiteral("界面1")});
    bar.resize(300, bar.sizeHint().height());
    page.resize(bar.size());
    page.show();

    const auto* tabs = bar.findChild<QTabBar*>();
    QVERIFY(tabs->mapTo(&bar, QPoint()).y() >= 8);
    const QColor surface = WbTheme::Instance()->Color(WbColor::Surface);
    const QImage picture = Picture(page);
    QCOMPARE(picture.pixelColor(picture.width() - 4, 4), WbTheme::Instance()->Color(WbColor::Window));
    QCOMPARE(picture.pixelColor(picture.width() - 4, picture.height() - 4), surface);
}

RPA_TEST_MAIN(TestThemedWidgets)

#include "tst_themedwidgets.moc"
