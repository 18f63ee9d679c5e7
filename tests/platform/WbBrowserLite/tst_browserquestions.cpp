// SPDX-License-Identifier: Apache-2.0

#include "BrowserFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>

namespace
{
// Says no to every question, as an impatient user does, and remembers them.
class Refusal : public QObject
{
    Q_OBJECT

public:
    Refusal() { qApp->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* box = qobject_cast<QDialog*>(watched);
        if (box && event->type() == QEvent::Show && box->isModal()) {
            ++count;
            QTimer::singleShot(0, box, &QDialog::reject);
        }
        return false;
    }
};

// Asks when it is loaded, and loads the next page until it has been loaded often enough.
QByteArray AskingPage(const char* next)
{
    return QByteArray("<html><head><title>asking</title></head><body><script>"
                      "var n = Number(sessionStorage.n || 0) + 1; sessionStorage.n = n;"
                      "var agreed = confirm('question ' + n);"
                      "if (n < 6) { ") +
           "onload = () => setTimeout(() => { " + next +
           "; }, 0); } else { document.title = 'end'; }</script></body></html>";
}
} // namespace

// How often a page may ask its user.
class BrowserQuestionsTest : public QObject
{
    Q_OBJECT

private slots:
    void aPageIsMutedAfterThreeQuestions_data()
    {
        QTest::addColumn<QByteArray>("next");
        QTest::newRow("asks and loads itself again") << QByteArray("location.reload()");
        QTest::newRow("asks and opens the other page")
            << QByteArray("location.href = location.pathname == '/a' ? '/b' : '/a'");
    }
    void aPageIsMutedAfterThreeQuestions()
    {
        QFETCH(QByteArray, next);
        BrowserFixture author;
        const ToastWatcher toasts;
        const Refusal refusal;
        author.server.Put(QStringLiteral("/a"), AskingPage(next.constData()));
        author.server.Put(QStringLiteral("/b"), AskingPage(next.constData()));

        author.Type(author.server.Url(QStringLiteral("/a")));

        QTRY_COMPARE_WITH_TIMEOUT(author.Title(), QStringLiteral("end"), 30000);
        QCOMPARE(refusal.count, 3);
        QTRY_COMPARE(
            toasts.GetTexts(),
            QStringList{QStringLiteral("网页 127.0.0.1 反复提问，不再显示它的问题，直到您重新打开网页")});
    }

    void aPageMayAskAgainWhenTheUserNavigates_data()
    {
        QTest::addColumn<QString>("act");
        QTest::newRow("loads again") << QStringLiteral("reload");
        QTest::newRow("goes back") << QStringLiteral("back");
        QTest::newRow("types an address") << QStringLiteral("type");
    }
    void aPageMayAskAgainWhenTheUserNavigates()
    {
        QFETCH(QString, act);
        BrowserFixture author;
        const Refusal refusal;
        author.server.Put(QStringLiteral("/0"), "<title>0</title><script>confirm('zero');</script>");
        author.server.Put(QStringLiteral("/a"), AskingPage("location.reload()"));
        author.Type(author.server.Url(QStringLiteral("/0")));
        QTRY_COMPARE(author.Title(), QStringLiteral("0"));
        QCOMPARE(refusal.count, 1);
        author.Type(author.server.Url(QStringLiteral("/a")));
        QTRY_COMPARE_WITH_TIMEOUT(author.Title(), QStringLiteral("end"), 30000);
        QCOMPARE(refusal.count, 4);

        if (act == QLatin1String("reload"))
            author.Press("browserReload");
        else if (act == QLatin1String("back"))
            author.Press("browserBack");
        else
            author.Type(author.server.Url(QStringLiteral("/a")));

        QTRY_COMPARE(refusal.count, 5);
    }

    void aProcessHearsNothingMoreFromASiteThatAsked()
    {
        BrowserFixture author;
        const Refusal refusal;
        author.server.Put(QStringLiteral("/a"), "<title>a</title><script>confirm('a');</script>");
        for (int i = 0; i < 6; ++i)
            QVERIFY(author.Open(QStringLiteral("/a")));
        QCOMPARE(refusal.count, 3);

        // Another site has not asked yet.
        QString elsewhere = author.server.Url(QStringLiteral("/a"));
        elsewhere.replace(QStringLiteral("127.0.0.1"), QStringLiteral("localhost"));
        QVERIFY(author.OpenUrl(elsewhere));
        QCOMPARE(refusal.count, 4);
    }
};

RPA_TEST_MAIN(BrowserQuestionsTest)
#include "tst_browserquestions.moc"
