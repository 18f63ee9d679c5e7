// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaHtmlNodeManager.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
RpaNode MakeNode(const QString& name)
{
    RpaNode node;
    node.name = name;
    node.css = QStringLiteral("#a > b");
    node.xpath = QStringLiteral("//b[@c=\"d\"]");
    node.pageUrl = QStringLiteral("https://example.com/?q=1");
    node.attributes = {{QStringLiteral("class"), QStringLiteral("x y")}};
    return node;
}
} // namespace

class RpaNodeManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void givesIdsAndFreeNames();
    void findsById();
    void readsBackWhatItWrote();
    void boundsWhatAForeignPageGives();
    void announcesEveryChange();
};

void RpaNodeManagerTest::givesIdsAndFreeNames()
{
    RpaHtmlNodeManager nodes;

    const QString first = nodes.AddNode(MakeNode(QStringLiteral("按钮")));
    const QString second = nodes.AddNode(MakeNode(QStringLiteral("按钮")));
    nodes.AddNode(RpaNode());

    QVERIFY(!first.isEmpty() && first != second);
    QCOMPARE(nodes.GetNode(1).name, QStringLiteral("按钮 2"));
    QCOMPARE(nodes.GetNode(2).name, QStringLiteral("元素"));
}

void RpaNodeManagerTest::findsById()
{
    RpaHtmlNodeManager nodes;
    const QString id = nodes.AddNode(MakeNode(QStringLiteral("按钮")));

    QCOMPARE(nodes.FindNode(id).css, QStringLiteral("#a > b"));
    QVERIFY(nodes.FindNode(QStringLiteral("none")).id.isEmpty());
    QCOMPARE(nodes.IndexOf(QStringLiteral("none")), -1);
}

void RpaNodeManagerTest::readsBackWhatItWrote()
{
    RpaHtmlNodeManager nodes;
    nodes.AddNode(MakeNode(QStringLiteral("甲")));
    nodes.AddNode(MakeNode(QStringLiteral("乙")));

    RpaHtmlNodeManager back;
    QVERIFY(back.Parse(nodes.ToJson()));

    QCOMPARE(back.GetNodes(), nodes.GetNodes());
    QVERIFY(!back.Parse("[]"));
    QCOMPARE(back.GetCount(), 2);
}

void RpaNodeManagerTest::boundsWhatAForeignPageGives()
{
    RpaNode node = MakeNode(QStringLiteral("大"));
    node.attributes.insert(QString(1000, QLatin1Char('k')), QStringLiteral("v"));
    node.attributes.insert(QStringLiteral("long"), QString(1000000, QLatin1Char('v')));
    for (int i = 0; i < 1000; ++i)
        node.attributes.insert(QStringLiteral("n%1").arg(i), QString());
    RpaHtmlNodeManager nodes;

    nodes.AddNode(node);
    RpaHtmlNodeManager back;

    QVERIFY(back.Parse(nodes.ToJson()));
    QCOMPARE(back.GetNode(0).attributes.size(), 256);
    QCOMPARE(back.GetNode(0).attributes.value(QStringLiteral("long")).size(), 16 * 1024);
}

void RpaNodeManagerTest::announcesEveryChange()
{
    RpaHtmlNodeManager nodes;
    QSignalSpy reset(&nodes, &RpaNodeManager::SigReset);
    QSignalSpy changed(&nodes, &RpaNodeManager::SigChanged);

    nodes.AddNode(MakeNode(QStringLiteral("甲")));
    QCOMPARE(changed.count(), 1);
    nodes.Clear();

    QCOMPARE(reset.count(), 1);
    QCOMPARE(changed.count(), 2);
}

QTEST_GUILESS_MAIN(RpaNodeManagerTest)
#include "tst_rpanodemanager.moc"
