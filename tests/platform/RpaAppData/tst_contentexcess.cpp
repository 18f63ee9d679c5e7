// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaContentExcess.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbFoundation/ContentLimits.h>

#include <QtTest>

namespace
{
// An app with a short text, which is told apart from all others, wherever texts may stand.
QByteArray App()
{
    RpaAppData app;
    app.InitDefault();
    app.GetAppExtendInfo()->manual = QStringLiteral("@manual@");
    RpaUIData* const page = app.GetUIDataManager()->AddUIData(QStringLiteral("订单"), RpaToolItem());
    for (const char* name : {"姓名", "地址"}) {
        RpaParamItem item;
        item.name = QString::fromUtf8(name);
        item.value = QStringLiteral("@%1@").arg(item.name);
        page->GetParamData()->InsertItem(-1, item);
    }
    for (const char* name : {"甲", "乙"}) {
        RpaTableColumn column;
        column.name = QString::fromUtf8(name);
        page->GetTableData()->InsertColumn(-1, column);
    }
    page->GetTableData()->InsertRows(-1, {{QStringLiteral("a"), QStringLiteral("b")},
                                          {QStringLiteral("c"), QStringLiteral("d")},
                                          {QStringLiteral("e"), QStringLiteral("@cell@")}});
    RpaProcess* const process = app.GetProcessDataManager()->AddProcess(QStringLiteral("对账"));
    process->SetProgramText(QStringLiteral("@program@"));
    return app.ToJson();
}

QByteArray With(const char* place, int bytes)
{
    QByteArray json = App();
    return json.contains(place) ? json.replace(place, QByteArray(bytes, 'x')) : QByteArray();
}
} // namespace

class ContentExcessTest : public QObject
{
    Q_OBJECT

private slots:
    void namesTheTextThatIsTooLong_data();
    void namesTheTextThatIsTooLong();
    void namesTheWholeWhenAllTextsTogetherAreTooLong();
    void saysWhyOtherContentCannotBeReadBack();
};

void ContentExcessTest::namesTheTextThatIsTooLong_data()
{
    QTest::addColumn<QByteArray>("place");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* place, const char* expected) {
        QTest::newRow(name) << QByteArray(place) << QString::fromUtf8(expected);
    };
    row("instructions", "@manual@", "使用说明超过 16 MB");
    row("first parameter", "@姓名@", "界面“订单”的参数“姓名”超过 16 MB");
    row("second parameter", "@地址@", "界面“订单”的参数“地址”超过 16 MB");
    row("cell", "@cell@", "界面“订单”的表格第 3 行第 2 列超过 16 MB");
    row("code", "@program@", "流程“对账”的代码超过 16 MB");
}

void ContentExcessTest::namesTheTextThatIsTooLong()
{
    QFETCH(QByteArray, place);
    QFETCH(QString, expected);
    RpaAppData reader;

    const QByteArray longest = With(place.constData(), ContentLimits::textBytes);
    QVERIFY(reader.Parse(longest));
    QCOMPARE(RpaContentExcess::Find(longest), QString());

    const QByteArray tooLong = With(place.constData(), ContentLimits::textBytes + 1);
    QVERIFY(!reader.Parse(tooLong));
    QCOMPARE(RpaContentExcess::Find(tooLong), expected);
}

void ContentExcessTest::namesTheWholeWhenAllTextsTogetherAreTooLong()
{
    QByteArray json = App();
    for (const char* place : {"@manual@", "@姓名@", "@地址@", "@cell@"})
        json.replace(place, QByteArray(ContentLimits::textBytes, 'x'));

    QCOMPARE(RpaContentExcess::Find(json), QStringLiteral("应用的全部内容超过 64 MB"));
}

void ContentExcessTest::saysWhyOtherContentCannotBeReadBack()
{
    const QByteArray deep =
        QByteArray(ContentLimits::depth + 1, '[') + QByteArray(ContentLimits::depth + 1, ']');

    const QString text = RpaContentExcess::Find(deep);

    QVERIFY2(text.startsWith(QStringLiteral("应用的内容无法再次打开")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("嵌套超过 64 层")), qPrintable(text));
}

QTEST_GUILESS_MAIN(ContentExcessTest)
#include "tst_contentexcess.moc"
