// SPDX-License-Identifier: Apache-2.0

#include <OxBase/OxJsonUtil.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

class OxJsonUtilTest : public QObject
{
    Q_OBJECT

private slots:
    void writesMembersInKeyOrder();
    void givesEveryTextBack();
};

void OxJsonUtilTest::writesMembersInKeyOrder()
{
    QMap<QString, QString> map;
    QCOMPARE(OxJsonUtil::ToJsonString(map), QStringLiteral("{}"));

    map.insert(QStringLiteral("venderId"), QStringLiteral("42"));
    map.insert(QStringLiteral("clickId"), QString());
    map.insert(QStringLiteral("pin"), QStringLiteral("张三"));

    QCOMPARE(OxJsonUtil::ToJsonString(map), QStringLiteral(R"({"clickId":"","pin":"张三","venderId":"42"})"));
}

void OxJsonUtilTest::givesEveryTextBack()
{
    QString text = QStringLiteral("\"\\/😀");
    for (ushort c = 0; c < 0x30; ++c)
        text.append(QChar(c));

    const QByteArray json = OxJsonUtil::ToJsonString({{text, text}}).toUtf8();

    QCOMPARE(QJsonDocument::fromJson(json).object().value(text).toString(), text);
}

QTEST_GUILESS_MAIN(OxJsonUtilTest)
#include "tst_oxjsonutil.moc"
