// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbFindBar.h>
#include <WbBaseUI/WbTextSearch.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>
#include <QToolButton>

class tst_FindBar : public QObject
{
    Q_OBJECT

private slots:
    void isHiddenUntilItIsOpened();
    void opensWithTheGivenTextReadyToBeTypedOver();
    void keepsItsTextWhenTheGivenOneHasSeveralLines();
    void asksForTheNextAndThePreviousPlace();
    void closesByEscapeAndByItsButton();
    void tellsHowManyPlacesThereAre();
    void showsOptionsBesideAndRowsBelow();

    void searchGoesAroundTheEnds();
    void searchHeedsItsFlags();
    void searchOfNothingFindsNothing();
    void marksEveryPlaceUpToItsBound();

private:
    template <typename Widget>
    Widget* Find(const char* name) const
    {
        return bar.findChild<Widget*>(QLatin1String(name));
    }
    void Open(const QString& text = QString())
    {
        bar.Open(text);
        bar.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bar));
    }

    WbFindBar bar{QStringLiteral("查找")};
};

void tst_FindBar::isHiddenUntilItIsOpened()
{
    const WbFindBar fresh(QStringLiteral("在流程中查找"));
    QVERIFY(fresh.isHidden());
    const auto* edit = fresh.findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QCOMPARE(edit->placeholderText(), QStringLiteral("在流程中查找"));
    QCOMPARE(edit->accessibleName(), QStringLiteral("在流程中查找"));
}

void tst_FindBar::opensWithTheGivenTextReadyToBeTypedOver()
{
    Open(QStringLiteral("amount"));
    auto* edit = Find<QLineEdit>("lineEditFind");
    QTRY_VERIFY(edit->hasFocus());
    QCOMPARE(bar.GetText(), QStringLiteral("amount"));

    QTest::keyClicks(edit, QStringLiteral("sum"));
    QCOMPARE(bar.GetText(), QStringLiteral("sum"));
}

void tst_FindBar::keepsItsTextWhenTheGivenOneHasSeveralLines()
{
    Open(QStringLiteral("one"));
    Open(QStringLiteral("two\nlines"));
    QCOMPARE(bar.GetText(), QStringLiteral("one"));
    Open(QStringLiteral("two") + QChar(QChar::ParagraphSeparator) + QStringLiteral("lines"));
    QCOMPARE(bar.GetText(), QStringLiteral("one"));
    Open();
    QCOMPARE(bar.GetText(), QStringLiteral("one"));
}

void tst_FindBar::asksForTheNextAndThePreviousPlace()
{
    Open(QStringLiteral("one"));
    QSignalSpy asked(&bar, &WbFindBar::SigFind);
    auto* edit = Find<QLineEdit>("lineEditFind");

    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter, Qt::ShiftModifier);
    QTest::mouseClick(Find<QToolButton>("findNextButton"), Qt::LeftButton);
    QTest::mouseClick(Find<QToolButton>("findPreviousButton"), Qt::LeftButton);

    QList<bool> backward;
    for (const QList<QVariant>& arguments : asked)
        backward << arguments.first().toBool();
    QCOMPARE(backward, QList<bool>({false, true, false, true}));
}

void tst_FindBar::closesByEscapeAndByItsButton()
{
    QSignalSpy closed(&bar, &WbFindBar::SigClosed);
    Open();
    QTest::keyClick(Find<QLineEdit>("lineEditFind"), Qt::Key_Escape);
    QVERIFY(bar.isHidden());
    QCOMPARE(closed.size(), 1);
    Open();
    QTest::mouseClick(Find<QToolButton>("findCloseButton"), Qt::LeftButton);
    QVERIFY(bar.isHidden());
    QCOMPARE(closed.size(), 2);
}

void tst_FindBar::tellsHowManyPlacesThereAre()
{
    Open(QStringLiteral("one"));
    auto* label = Find<QLabel>("labelFindCount");
    bar.ShowCount(0);
    QCOMPARE(label->text(), QStringLiteral("没有找到"));
    bar.ShowCount(2);
    QCOMPARE(label->text(), QStringLiteral("共 2 处"));
    bar.ShowCount(1000, true);
    QCOMPARE(label->text(), QStringLiteral("共 1000 处以上"));
    Find<QLineEdit>("lineEditFind")->clear();
    bar.ShowCount(0);
    QCOMPARE(label->text(), QString());
}

void tst_FindBar::showsOptionsBesideAndRowsBelow()
{
    auto* option = new QCheckBox(QStringLiteral("option"));
    auto* row = new QLabel(QStringLiteral("row"));
    bar.AddOption(option);
    bar.AddRow(row);
    Open();
    QTRY_VERIFY(option->isVisible() && row->isVisible());
    QVERIFY(option->mapTo(&bar, QPoint()).x() >
            Find<QToolButton>("findNextButton")->mapTo(&bar, QPoint()).x());
    QVERIFY(row->y() > Find<QLineEdit>("lineEditFind")->geometry().bottom());
}

void tst_FindBar::searchGoesAroundTheEnds()
{
    const QTextDocument document(QStringLiteral("one two one"));
    QTextCursor cursor(const_cast<QTextDocument*>(&document));
    QList<int> places;
    for (int i = 0; i < 3; ++i) {
        cursor = WbTextSearch::Find(cursor, QStringLiteral("one"), {});
        places << cursor.selectionStart();
    }
    QCOMPARE(places, QList<int>({0, 8, 0}));
    cursor = WbTextSearch::Find(cursor, QStringLiteral("one"), QTextDocument::FindBackward);
    QCOMPARE(cursor.selectionStart(), 8);
}

void tst_FindBar::searchHeedsItsFlags()
{
    QTextDocument document(QStringLiteral("ones One one"));
    const QTextCursor start(&document);
    QCOMPARE(WbTextSearch::Find(start, QStringLiteral("one"), QTextDocument::FindWholeWords).selectionStart(),
             5);
    QCOMPARE(
        WbTextSearch::Find(start, QStringLiteral("One"), QTextDocument::FindCaseSensitively).selectionStart(),
        5);
    QCOMPARE(
        WbTextSearch::MarksOf(&document, QStringLiteral("one"), QTextDocument::FindWholeWords).places.size(),
        2);
}

void tst_FindBar::searchOfNothingFindsNothing()
{
    QTextDocument document(QStringLiteral("text"));
    QVERIFY(WbTextSearch::Find(QTextCursor(&document), QString(), {}).isNull());
    QVERIFY(WbTextSearch::Find(QTextCursor(&document), QStringLiteral("absent"), {}).isNull());
    QVERIFY(WbTextSearch::MarksOf(&document, QString(), {}).places.isEmpty());
    QVERIFY(!WbTextSearch::MarksOf(&document, QStringLiteral("absent"), {}).isMore);
}

void tst_FindBar::marksEveryPlaceUpToItsBound()
{
    QTextDocument document(QStringLiteral("a ").repeated(1000));
    const auto exact = WbTextSearch::MarksOf(&document, QStringLiteral("a"), {});
    QCOMPARE(exact.places.size(), 1000);
    QVERIFY(!exact.isMore);
    QCOMPARE(exact.places.at(1).cursor.selectionStart(), 2);

    document.setPlainText(QStringLiteral("a ").repeated(1001));
    const auto many = WbTextSearch::MarksOf(&document, QStringLiteral("a"), {});
    QCOMPARE(many.places.size(), 1000);
    QVERIFY(many.isMore);
}

QTEST_MAIN(tst_FindBar)
#include "tst_findbar.moc"
