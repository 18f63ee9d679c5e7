// SPDX-License-Identifier: Apache-2.0

#include "ActPalette.h"
#include "ActWords.h"
#include "KeyTable.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

namespace
{
// All acts of the key table, those for lists of apps as they are in the editor.
QVector<ActEntry> Entries()
{
    QVector<ActEntry> entries;
    for (const KeyRow& row : KeyTable::Rows()) {
        const QString reason =
            row.places.testFlag(KeyPlace::Editor) ? QString() : QStringLiteral("只能在应用列表中使用");
        entries.append({row.group, row.text, QString(), reason, [] {}});
    }
    return entries;
}
} // namespace

class ActPaletteTest : public QObject
{
    Q_OBJECT

private slots:
    void doesWhatTheWordsMean_data();
    void doesWhatTheWordsMean();
    void saysThatNothingFits();
    void otherWordsBelongToActsOfTheTable();
};

void ActPaletteTest::doesWhatTheWordsMean_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("act");

    QTest::newRow("name") << QStringLiteral("停止") << QStringLiteral("停止");
    QTest::newRow("pinyin") << QStringLiteral("yunxing") << QStringLiteral("运行");
    QTest::newRow("initials") << QStringLiteral("lcsj") << QStringLiteral("流程设计");
    QTest::newRow("another reading") << QStringLiteral("chongzuo") << QStringLiteral("重做");
    QTest::newRow("signs in between") << QStringLiteral("zdzkllq") << QStringLiteral("折叠 / 展开浏览器窗口");
    QTest::newRow("other word") << QStringLiteral("存盘") << QStringLiteral("保存");
    QTest::newRow("pinyin of the other word") << QStringLiteral("huitui") << QStringLiteral("撤销");
    QTest::newRow("begins with it before contains it") << QStringLiteral("bc") << QStringLiteral("保存");
    QTest::newRow("what can be done first") << QStringLiteral("zhengshi") << QStringLiteral("上线");
    QTest::newRow("no reading of old") << QStringLiteral("ym") << QStringLiteral("界面设计");
    QTest::newRow("two words") << QStringLiteral("liulan tanchu") << QStringLiteral("弹出 / 放回浏览器窗口");
}

void ActPaletteTest::doesWhatTheWordsMean()
{
    QFETCH(QString, words);
    QFETCH(QString, act);
    const QVector<ActEntry> entries = Entries();
    ActPalette palette(entries);
    QSignalSpy chosen(&palette, &ActPalette::SigChosen);
    palette.show();
    auto* const search = palette.findChild<QLineEdit*>(QStringLiteral("editAct"));

    search->setText(words);
    QTest::keyClick(search, Qt::Key_Return);

    QCOMPARE(chosen.count(), 1);
    QCOMPARE(entries.at(chosen.first().first().toInt()).text, act);
}

void ActPaletteTest::saysThatNothingFits()
{
    ActPalette palette(Entries());
    QSignalSpy chosen(&palette, &ActPalette::SigChosen);
    palette.show();
    auto* const search = palette.findChild<QLineEdit*>(QStringLiteral("editAct"));

    search->setText(QStringLiteral("qqq"));
    QTest::keyClick(search, Qt::Key_Return);

    QCOMPARE(palette.findChild<QLabel*>(QStringLiteral("labelReason"))->text(),
             QStringLiteral("没有找到“qqq”。可以换个说法，也可以输入拼音或首字母"));
    QCOMPARE(chosen.count(), 0);
    QVERIFY(palette.isVisible());
}

// An act that gets another name keeps its other words.
void ActPaletteTest::otherWordsBelongToActsOfTheTable()
{
    for (const KeyRow& row : KeyTable::Rows()) {
        const bool hasWords = !ActWords::Of(row.text).isEmpty();
        const bool needsNone = row.act == KeyAct::ShowPalette || row.act == KeyAct::ListNext ||
                               row.act == KeyAct::ListPrevious || row.act == KeyAct::PageNext ||
                               row.act == KeyAct::PagePrevious;
        QVERIFY2(hasWords || needsNone, qPrintable(row.text));
    }
}

QTEST_MAIN(ActPaletteTest)
#include "tst_actpalette.moc"
