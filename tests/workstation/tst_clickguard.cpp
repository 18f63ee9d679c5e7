// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

namespace
{
// A page that is one button.
class Page : public QWidget
{
    Q_OBJECT

public:
    explicit Page(const QString& text) : button(new QPushButton(text))
    {
        auto* layout = new QVBoxLayout(this);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        layout->addWidget(button);
    }

    QPushButton* const button;
};

// A click right after the one before, as the window system brings the clicks of a double click. Those of
// QTest are further apart.
void ClickAtOnce(QWidget& top, const QPoint& place)
{
    QWindow* window = top.windowHandle();
    const QPoint global = top.mapToGlobal(place);
    qt_handleMouseEvent(window, place, global, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress,
                        Qt::NoModifier, ++QTest::lastMouseTimestamp);
    qt_handleMouseEvent(window, place, global, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease,
                        Qt::NoModifier, ++QTest::lastMouseTimestamp);
    QCoreApplication::processEvents();
}

struct TwoPages
{
    TwoPages()
    {
        window.AddPage(list, QString());
        window.AddPage(run, QStringLiteral("返回"));
        window.show();
        // The second page is there in full, as one that was opened before.
        window.ShowPage(run);
        window.ShowPage(list);
    }

    // As the window system would bring it.
    void DoubleClick(const QPoint& place)
    {
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    }
    void Click(const QPoint& place)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    }

    MainWindow window;
    Page* list = new Page(QStringLiteral("卡片")); // the window owns its pages
    Page* run = new Page(QStringLiteral("运行"));
    const QPoint middle{640, 400};
};
} // namespace

// What a double click does to a page that its first click brings.
class tst_ClickGuard : public PageFixture
{
    Q_OBJECT

private slots:
    void theSecondPressNeverReachesThePageThatCame();
    void theSecondPressNeverReachesADialogThatCame();
    void thePressesOfATripleClickDoNotEither();
    void aClickAfterTheDoubleClickCounts();
    void aSecondClickElsewhereCounts();
    void whatWasThereGetsDoubleClicks();
};

void tst_ClickGuard::theSecondPressNeverReachesThePageThatCame()
{
    TwoPages pages;
    connect(pages.list->button, &QPushButton::clicked, &pages.window,
            [&pages] { pages.window.ShowPage(pages.run); });
    QSignalSpy pressed(pages.run->button, &QPushButton::pressed);
    QSignalSpy clicked(pages.run->button, &QPushButton::clicked);

    pages.DoubleClick(pages.middle);

    QCOMPARE(pages.window.CurrentPage(), pages.run);
    QCOMPARE(pressed.size(), 0);
    QCOMPARE(clicked.size(), 0);
}

void tst_ClickGuard::theSecondPressNeverReachesADialogThatCame()
{
    TwoPages pages;
    QDialog dialog(&pages.window);
    auto* yes = new QPushButton(QStringLiteral("是"), &dialog);
    yes->resize(400, 300);
    QSignalSpy agreed(yes, &QPushButton::clicked);
    connect(pages.list->button, &QPushButton::clicked, &dialog, [&] {
        dialog.setGeometry(QRect(pages.window.mapToGlobal(pages.middle) - QPoint(200, 150), QSize(400, 300)));
        dialog.open();
    });

    ClickAtOnce(pages.window, pages.middle);
    QVERIFY(dialog.isVisible());
    const QPoint same = dialog.mapFromGlobal(pages.window.mapToGlobal(pages.middle));
    ClickAtOnce(dialog, same);

    QCOMPARE(agreed.size(), 0);
    QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, Qt::NoModifier, same + QPoint(60, 60));
    QCOMPARE(agreed.size(), 1);
}

void tst_ClickGuard::thePressesOfATripleClickDoNotEither()
{
    TwoPages pages;
    connect(pages.list->button, &QPushButton::clicked, &pages.window,
            [&pages] { pages.window.ShowPage(pages.run); });
    QSignalSpy clicked(pages.run->button, &QPushButton::clicked);

    for (int i = 0; i < 3; ++i)
        ClickAtOnce(pages.window, pages.middle);

    QCOMPARE(clicked.size(), 0);
}

void tst_ClickGuard::aClickAfterTheDoubleClickCounts()
{
    TwoPages pages;
    connect(pages.list->button, &QPushButton::clicked, &pages.window,
            [&pages] { pages.window.ShowPage(pages.run); });
    QSignalSpy clicked(pages.run->button, &QPushButton::clicked);

    // Single clicks are further apart than those of a double click.
    pages.Click(pages.middle);
    pages.Click(pages.middle);

    QCOMPARE(clicked.size(), 1);
}

void tst_ClickGuard::aSecondClickElsewhereCounts()
{
    TwoPages pages;
    connect(pages.list->button, &QPushButton::clicked, &pages.window,
            [&pages] { pages.window.ShowPage(pages.run); });
    QSignalSpy clicked(pages.run->button, &QPushButton::clicked);

    ClickAtOnce(pages.window, pages.middle);
    ClickAtOnce(pages.window, pages.middle + QPoint(100, 60));

    QCOMPARE(clicked.size(), 1);
}

void tst_ClickGuard::whatWasThereGetsDoubleClicks()
{
    TwoPages pages;
    auto* edit = new QLineEdit(QStringLiteral("单词"), &pages.window);
    edit->setGeometry(600, 380, 200, 40);
    edit->show();
    // Something appears, but elsewhere.
    connect(edit, &QLineEdit::cursorPositionChanged, &pages.window, [&pages] { pages.run->show(); });

    pages.DoubleClick(edit->geometry().topLeft() + QPoint(12, 20));

    QCOMPARE(edit->selectedText(), QStringLiteral("单词"));
}

RPA_TEST_MAIN(tst_ClickGuard)

#include "tst_clickguard.moc"
