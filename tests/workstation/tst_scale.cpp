// SPDX-License-Identifier: Apache-2.0

// The scale comes from the environment of this test.
#include "EditorPage.h"
#include "LivingWorkstation.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "TextFit.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QPushButton>
#include <QtTest>

namespace
{
constexpr const char* pages[] = {"settings", "process", "ui", "usage", "palette", "keys", "packages"};
}

// Every page of the workstation at the sizes of small and dense screens.
class tst_Scale : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void showsEveryTextOfEveryPage_data();
    void showsEveryTextOfEveryPage();
    void followsTheSizeOfTheSettingsAtOnce_data();
    void followsTheSizeOfTheSettingsAtOnce();
    void foldsTheBrowserFirstThenTheCommands();
    void keepsTheCommandsAsTheAuthorWantsThem();

private:
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        LivingWorkstation::Key(key, modifiers);
    }
    void GoTo(const QString& page);
    // Nothing on the page is cut at this size of the window.
    void CheckPage(const QString& page, const QSize& size);
    void Narrow(int width) { living->Window()->resize(width, 600); }
    // The button in the process editor that opens and closes the list of commands, by the keyboard.
    void ToggleCommands();

    std::unique_ptr<LivingWorkstation> living;
};

void tst_Scale::initTestCase()
{
    living = std::make_unique<LivingWorkstation>();
    QVERIFY(living->Start());
    QVERIFY(living->CreateApp(QStringLiteral("缩放应用")));
    QVERIFY(living->AddStatement(QStringLiteral("点击元素")));
}

void tst_Scale::cleanup()
{
    living->Station()->GetSettings()->SetScale(100);
}

void tst_Scale::cleanupTestCase()
{
    living.reset();
}

void tst_Scale::showsEveryTextOfEveryPage_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("scheme");

    const QSize sizes[] = {{960, 540}, {1280, 720}, {1920, 1080}};
    // Another theme makes every widget anew, which takes longer than looking at a page does.
    for (const auto scheme : {WbTheme::Scheme::Light, WbTheme::Scheme::Dark}) {
        const bool dark = scheme == WbTheme::Scheme::Dark;
        for (const char* page : pages) {
            for (const QSize& size : sizes) {
                QTest::addRow("%s, %d × %d, %s", page, size.width(), size.height(), dark ? "dark" : "light")
                    << QString::fromLatin1(page) << size << int(scheme);
            }
        }
    }
}

void tst_Scale::GoTo(const QString& page)
{
    const std::pair<const char*, std::pair<Qt::Key, Qt::KeyboardModifiers>> keys[] = {
        {"ui", {Qt::Key_1, Qt::ControlModifier}},
        {"process", {Qt::Key_2, Qt::ControlModifier}},
        {"usage", {Qt::Key_3, Qt::ControlModifier}},
        {"settings", {Qt::Key_Comma, Qt::ControlModifier}},
        {"palette", {Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier}},
        {"keys", {Qt::Key_F1, Qt::ControlModifier}},
        {"packages", {Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier}},
    };
    for (const auto& [name, key] : keys)
        if (page == QLatin1String(name))
            Key(key.first, key.second);
}

void tst_Scale::showsEveryTextOfEveryPage()
{
    QFETCH(QString, page);
    QFETCH(QSize, size);
    QFETCH(int, scheme);
    if (int(WbTheme::Instance()->GetScheme()) != scheme)
        WbTheme::Instance()->Apply(static_cast<WbTheme::Scheme>(scheme));

    CheckPage(page, size);
}

void tst_Scale::followsTheSizeOfTheSettingsAtOnce_data()
{
    QTest::addColumn<int>("percent");

    for (const int percent : {125, 150, 200})
        QTest::addRow("%d %%", percent) << percent;
}

void tst_Scale::followsTheSizeOfTheSettingsAtOnce()
{
    QFETCH(int, percent);
    const int before = living->Window()->fontMetrics().height();

    living->Station()->GetSettings()->SetScale(percent); // over the editor that is open

    QVERIFY(qAbs(living->Window()->fontMetrics().height() - before * percent / 100) <= 2); // rounded
    const auto* button = living->Window()->findChild<QPushButton*>(QStringLiteral("buttonSettings"));
    QCOMPARE(button->font().pointSizeF(), living->Window()->font().pointSizeF());
    for (const char* page : pages) {
        CheckPage(QLatin1String(page), QSize(1280, 720) * percent / 100);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_Scale::CheckPage(const QString& page, const QSize& size)
{
    living->Window()->resize(size);
    GoTo(page);
    QCoreApplication::processEvents();
    const QWidget* const dialog = QApplication::activeModalWidget();
    const QWidget* const shown = dialog ? dialog : living->Window();

    const QStringList cut = TextFit::CutTexts(*shown);
    const QSize needed = shown->size();
    if (dialog) {
        Key(Qt::Key_Escape);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    } else if (page == QLatin1String("settings")) {
        Key(Qt::Key_W, Qt::ControlModifier);
    }

    QCOMPARE(cut.join(QLatin1Char('\n')), QString());
    QVERIFY(needed.width() <= size.width() && needed.height() <= size.height());
    QCOMPARE(living->Window()->size(), size);
}

void tst_Scale::ToggleCommands()
{
    QVERIFY(LivingWorkstation::TabTo("actionCommandsButton"));
    Key(Qt::Key_Return);
}

void tst_Scale::foldsTheBrowserFirstThenTheCommands()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    const auto shown = [](const char* name) { return LivingWorkstation::Shown(name) != nullptr; };
    const bool browser = living->Window()->findChild<QWidget*>(QStringLiteral("browserPane"));
    const std::tuple<int, bool, bool> widths[] = {
        {1280, true, true}, {1279, false, true}, {800, false, false}, {960, false, true}, {1400, true, true}};
    for (const auto& [width, pane, commands] : widths) {
        Narrow(width);
        QCOMPARE(shown("browserPane"), pane && browser);
        QCOMPARE(shown("commandPalette"), commands);
    }
}

void tst_Scale::keepsTheCommandsAsTheAuthorWantsThem()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    Narrow(800);
    ToggleCommands();
    QVERIFY(LivingWorkstation::Shown("commandPalette"));
    Narrow(1400);
    QVERIFY(LivingWorkstation::Shown("commandPalette"));

    ToggleCommands();
    Narrow(800);
    Narrow(1400);
    QVERIFY(!LivingWorkstation::Shown("commandPalette"));
    ToggleCommands();
    QVERIFY(LivingWorkstation::Shown("commandPalette"));
}

RPA_TEST_MAIN(tst_Scale)
#include "tst_scale.moc"
