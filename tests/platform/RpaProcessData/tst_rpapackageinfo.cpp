// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaPackageInfo.h>

#include <QtTest>

namespace
{
QSharedPointer<PackageItem> Item(const QString& name, const QString& version = QString())
{
    return QSharedPointer<PackageItem>::create(PackageItem{name, version});
}
} // namespace

class RpaPackageInfoTest : public QObject
{
    Q_OBJECT

private slots:
    void readsBackWhatItWrote();
    void comparesWithoutRegardToOrder();
    void copiesItemsWhenAllAreCopied();
    void sharesItemsWhenTheListIsSet();
    void refusesBadText();
};

void RpaPackageInfoTest::readsBackWhatItWrote()
{
    RpaPackageInfo info;
    info.SetListPackageItemPtr(
        {Item(QStringLiteral("openpyxl"), QStringLiteral("3.1.2")), Item(QStringLiteral("包"))});

    const QByteArray json = info.ToJson();
    RpaPackageInfo back;
    QVERIFY(back.Parse(json));

    QCOMPARE(json, QByteArray("{\"packages\":[{\"name\":\"openpyxl\",\"version\":\"3.1.2\"},{\"name\":\"包\","
                              "\"version\":\"\"}]}"));
    QVERIFY(back.IsEqual(info));
    QVERIFY(!back.IsEmpty());
}

void RpaPackageInfoTest::comparesWithoutRegardToOrder()
{
    RpaPackageInfo a;
    RpaPackageInfo b;
    a.SetListPackageItemPtr({Item(QStringLiteral("x")), Item(QStringLiteral("y"), QStringLiteral("1"))});
    b.SetListPackageItemPtr({Item(QStringLiteral("y"), QStringLiteral("1")), Item(QStringLiteral("x"))});
    QVERIFY(a.IsEqual(b));

    b.SetListPackageItemPtr({Item(QStringLiteral("y"), QStringLiteral("2")), Item(QStringLiteral("x"))});
    QVERIFY(!a.IsEqual(b));
    b.SetListPackageItemPtr({Item(QStringLiteral("x"))});
    QVERIFY(!a.IsEqual(b));
}

void RpaPackageInfoTest::copiesItemsWhenAllAreCopied()
{
    RpaPackageInfo a;
    RpaPackageInfo b;
    a.SetListPackageItemPtr({Item(QStringLiteral("x"))});

    b.SetPackageInfo(a);
    a.GetListPackageItemPtr().first()->version = QStringLiteral("9");

    QVERIFY(b.GetListPackageItemPtr().first()->version.isEmpty());
}

void RpaPackageInfoTest::sharesItemsWhenTheListIsSet()
{
    const auto item = Item(QStringLiteral("x"));
    RpaPackageInfo info;

    info.SetListPackageItemPtr({item, nullptr});

    QCOMPARE(info.GetListPackageItemPtr(), QList<QSharedPointer<PackageItem>>{item});
}

void RpaPackageInfoTest::refusesBadText()
{
    RpaPackageInfo info;
    info.SetListPackageItemPtr({Item(QStringLiteral("x"))});

    QVERIFY(!info.Parse("[]"));
    QVERIFY(!info.Parse("{\"packages\":["));
    QVERIFY(info.Parse("{}"));
    QCOMPARE(info.GetListPackageItemPtr().size(), 1);
    QVERIFY(info.Parse("{\"packages\":[{},{\"name\":\"a\"},3]}"));
    QCOMPARE(info.GetListPackageItemPtr().size(), 1);
}

QTEST_GUILESS_MAIN(RpaPackageInfoTest)
#include "tst_rpapackageinfo.moc"
