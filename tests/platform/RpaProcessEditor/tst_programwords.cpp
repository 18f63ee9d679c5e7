// SPDX-License-Identifier: Apache-2.0

#include "CodeAuthor.h"
#include "HelperPython.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbTheme.h>

#include <QTest>

#include <memory>

// The program editor where there is no jedi.
class tst_ProgramWords : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void offersTheWordsOfTheTextAndSaysSoOnce();
    void offersNothingBehindADotOfNothingWritten();
    void saysWhatDefinitionsNeed();
    void cleanupTestCase() { python.reset(); }

private:
    std::unique_ptr<HelperPython> python;
};

void tst_ProgramWords::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    python = std::make_unique<HelperPython>(HelperPython::WithoutPackages());
}

void tst_ProgramWords::offersTheWordsOfTheTextAndSaysSoOnce()
{
    CodeAuthor author(QStringLiteral("customer = 1\n|"));
    author.Write(QStringLiteral("cus"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Offered(), QStringList{QStringLiteral("customer")},
                              CodeAuthor::patienceMs);
    QCOMPARE(author.Hint(), QStringLiteral("没有找到 jedi，只列出程序中的词"));
    author.Key(Qt::Key_Return);
    QCOMPARE(author.Text(), QStringLiteral("customer = 1\ncustomer"));

    author.Key(Qt::Key_Return);
    author.Write(QStringLiteral("cu"));

    QCOMPARE(author.Offered(), QStringList{QStringLiteral("customer")});
    QCOMPARE(author.Hint(), QString());
}

void tst_ProgramWords::offersNothingBehindADotOfNothingWritten()
{
    CodeAuthor author(QStringLiteral("customer = 1\ncustomer|"));

    author.Write(QStringLiteral("."));
    QVERIFY(!author.IsListShown());

    author.Write(QStringLiteral(" cus"));
    QVERIFY(author.Offers(QStringLiteral("customer")));
}

void tst_ProgramWords::saysWhatDefinitionsNeed()
{
    ToastWatcher toasts;
    CodeAuthor author(QStringLiteral("customer = 1\ncust|omer"));

    author.Key(Qt::Key_F12);
    QTRY_COMPARE(toasts.GetTexts(), QStringList{QStringLiteral("转到定义需要 jedi，请先安装 python3-jedi")});
    toasts.Clear();
    author.Key(Qt::Key_F2);

    QTRY_COMPARE(toasts.GetTexts(), QStringList{QStringLiteral("重命名需要 jedi，请先安装 python3-jedi")});
}

RPA_TEST_MAIN(tst_ProgramWords)

#include "tst_programwords.moc"
