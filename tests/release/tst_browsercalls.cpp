// SPDX-License-Identifier: Apache-2.0

// What the pop-out window and the workstation's window are told.
#include "EditorCalls.h"
#include "TestApp.h"

#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QLayout>
#include <QPointer>
#include <QSplitter>
#include <QtTest>

namespace
{
// Notes what it is told, and takes the browser in.
class NotingWindow : public IBrowserBorderWindow
{
public:
    explicit NotingWindow(QWidget* parent) : IBrowserBorderWindow(parent) { setWindowFlags(Qt::Window); }

    void SetTarget(QWidget* target, const QRect& rect) override
    {
        CallLog::Note(target || !rect.isNull() ? QStringLiteral("target some")
                                               : QStringLiteral("target none"));
    }
    void SetContent(IBrowserWidget* browser) override
    {
        CallLog::Note(browser ? QStringLiteral("content some") : QStringLiteral("content none"));
        browser->setParent(this);
        browser->show();
    }
};

QPointer<NotingWindow> window;

// Comes back to its pane even when it is taken away.
class ClingingBrowser : public NotingBrowser
{
public:
    using NotingBrowser::NotingBrowser;
    ~ClingingBrowser() override
    {
        emit SigPopup(false);
        emit SigFold();
    }
};
} // namespace

// These two stand in the place of the libraries' own.
IBrowserBorderWindow* WbBrowserLite::CreateBrowserEmbed(QWidget* parent)
{
    CallLog::Note(parent ? QStringLiteral("window of some") : QStringLiteral("window of none"));
    window = new NotingWindow(parent);
    return window;
}

void UIUtils::SetForeground(QWidget* foreground, bool activate)
{
    CallLog::Note(QStringLiteral("%1 to the front%2")
                      .arg(foreground ? foreground->objectName() : QStringLiteral("nothing"),
                           activate ? QStringLiteral(" with the keyboard") : QString()));
}

class BrowserCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void popsOutIntoOneWindowAndComesBack()
    {
        QWidget main;
        main.setObjectName(QStringLiteral("main window"));
        UIMain::Instance()->SetMainWidget(&main);
        Open();

        emit Browser()->SigPopup(true);
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("window of none"), QStringLiteral("target none"),
                              QStringLiteral("content some")}));
        QVERIFY(window->isVisible());
        const QPointer<NotingWindow> first = window;

        emit Browser()->SigPopup(false);
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("main window to the front with the keyboard")));
        QVERIFY(!window->isVisible());

        emit Browser()->SigPopup(true);
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("target none"), QStringLiteral("content some")}));
        QCOMPARE(window, first);
        emit Browser()->SigPopup(false);
        UIMain::Instance()->SetMainWidget(nullptr);
    }

    void makesNoWindowBeforeItIsNeeded()
    {
        Open();
        emit Browser()->SigFold();
        author.reset();

        QCOMPARE(CallLog::Take(), QStringList());
    }

    void hearsNothingOfItsBrowserOnTheWayOut_data()
    {
        QTest::addColumn<bool>("isPoppedOut");
        QTest::newRow("in its pane") << false;
        QTest::newRow("popped out") << true;
    }

    void hearsNothingOfItsBrowserOnTheWayOut()
    {
        QFETCH(bool, isPoppedOut);
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget* pane) { return new ClingingBrowser(pane); });
        Open();
        if (isPoppedOut)
            emit Browser()->SigPopup(true);
        CallLog::Take();

        author.reset();

        QCOMPARE(CallLog::Take(), QStringList());
    }

    void theWindowGoesWithTheEditorOnlyWhileTheBrowserIsInIt()
    {
        Open();
        emit Browser()->SigPopup(true);
        QWidget* editor = author->Find("editorWidget")->window();
        editor->hide();
        QVERIFY(!window->isVisible());
        editor->show();
        QVERIFY(window->isVisible());
        emit Browser()->SigPopup(false);

        editor->hide();
        editor->show();

        QVERIFY(!window->isVisible());
        QTRY_VERIFY(Browser()->isVisible());
    }

    void standsBeforeItsStrip()
    {
        Open();
        const QLayout* pane = author->Find("widgetContainer")->layout();

        QCOMPARE(pane->itemAt(0)->widget(), static_cast<QWidget*>(Browser()));
        QCOMPARE(pane->itemAt(1)->widget(), author->Find("RpaBrowserNaviWidget"));
    }

    void unfoldsToTheWidthThatTheAuthorGaveIt()
    {
        Open();
        auto* splitter = author->Find<QSplitter>("splitter");
        splitter->setSizes({700, 500});
        const QList<int> before = splitter->sizes();

        emit Browser()->SigFold();
        QTRY_VERIFY(splitter->sizes() != before);
        QTest::mouseClick(author->Find("pushButtonUnfold"), Qt::LeftButton);

        QTRY_COMPARE(splitter->sizes(), before);
    }

private:
    IBrowserWidget* Browser() const
    {
        IBrowserWidget* browser = nullptr;
        const QWidgetList widgets = QApplication::allWidgets();
        for (QWidget* widget : widgets)
            if (auto* one = qobject_cast<IBrowserWidget*>(widget))
                browser = one;
        return browser;
    }
};

RPA_TEST_MAIN(BrowserCallsTest)
#include "tst_browsercalls.moc"
