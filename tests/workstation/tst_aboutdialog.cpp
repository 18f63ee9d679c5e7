// SPDX-License-Identifier: Apache-2.0

#include "AboutDialog.h"
#include "TestApp.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>
#include <WbHttpModule/WbHttpClient.h>
#include <WbSystem/PythonInterpreter.h>

#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace
{
QString ValueOf(const BuildInfo& facts, const QString& name)
{
    for (const BuildFact& fact : facts.GetFacts())
        if (fact.name == name)
            return fact.value;
    return QStringLiteral("no such fact");
}

bool HaveAnswered(const BuildInfo& facts)
{
    return !facts.GetText().contains(QStringLiteral("正在查询…"));
}

const QString server = QStringLiteral("版本服务");
const QString python = QStringLiteral("Python");
} // namespace

class tst_AboutDialog : public QObject
{
    Q_OBJECT

private slots:
    void saysWhatTheLibrariesSayOfThemselves();
    void asksTheServerForItsDatabases();
    void namesThePythonThatRunsProcesses();
    void saysWhatCannotBeAsked_data();
    void saysWhatCannotBeAsked();
    void goesAwayWhileTheServerIsBeingAsked();
    void copiesAllFactsByKeyboard();
    void foldsWhatIsTechnical();
    void closesByEscape();
    void namesEveryFactToAScreenReader();
};

void tst_AboutDialog::saysWhatTheLibrariesSayOfThemselves()
{
    const BuildInfo facts{QString()};

    const QString browser = WbBrowserLite::GetEngineName();
    const QString highlighter = ProcessProgramEditorWidget::GetHighlighterName();
    QCOMPARE(ValueOf(facts, QStringLiteral("内嵌浏览器")),
             browser.isEmpty() ? QStringLiteral("无") : browser);
    QCOMPARE(ValueOf(facts, QStringLiteral("代码高亮")),
             highlighter.isEmpty() ? QStringLiteral("自带实现") : highlighter);
    QCOMPARE(ValueOf(facts, QStringLiteral("网络")), WbHttpClient::GetLibraryName());
    QCOMPARE(ValueOf(facts, QStringLiteral("加密连接")), WbHttpClient::GetTlsName());
    QVERIFY(ValueOf(facts, QStringLiteral("Qt")).startsWith(QLatin1String(qVersion())));
    QTRY_VERIFY_WITH_TIMEOUT(HaveAnswered(facts), 20000);
}

void tst_AboutDialog::asksTheServerForItsDatabases()
{
    const BuildInfo facts{QStringLiteral(SERVER_PROGRAM)};

    QTRY_VERIFY_WITH_TIMEOUT(ValueOf(facts, server).contains(QStringLiteral("，数据库：SQLite 3.")), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(HaveAnswered(facts), 20000);
}

void tst_AboutDialog::namesThePythonThatRunsProcesses()
{
    const BuildInfo facts{QString()};

    QTRY_VERIFY_WITH_TIMEOUT(ValueOf(facts, python).startsWith(QStringLiteral("3.")), 20000);
    QVERIFY(ValueOf(facts, python).contains(QDir::toNativeSeparators(PythonInterpreter::Find())));
}

void tst_AboutDialog::saysWhatCannotBeAsked_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("nothing found") << QString();
    QTest::newRow("no such program") << QStringLiteral("/no/such/program");
    QTest::newRow("another program") << QCoreApplication::applicationFilePath();
}

void tst_AboutDialog::saysWhatCannotBeAsked()
{
    QFETCH(QString, program);

    const BuildInfo facts(program);

    QTRY_VERIFY_WITH_TIMEOUT(HaveAnswered(facts), 20000);
    QCOMPARE(ValueOf(facts, server), QStringLiteral("无法启动"));
}

void tst_AboutDialog::goesAwayWhileTheServerIsBeingAsked()
{
    auto facts = std::make_unique<BuildInfo>(QStringLiteral(SERVER_PROGRAM));
    QCOMPARE(ValueOf(*facts, server), QStringLiteral("正在查询…"));
    QSignalSpy changed(facts.get(), &BuildInfo::SigChanged);

    facts.reset();

    QCOMPARE(changed.size(), 0);
}

void tst_AboutDialog::copiesAllFactsByKeyboard()
{
    AboutDialog dialog(QStringLiteral(SERVER_PROGRAM), nullptr);
    const BuildInfo facts{QString()};
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* copy = dialog.findChild<QPushButton*>(QStringLiteral("buttonCopyFacts"));
    auto* close = dialog.findChild<QPushButton*>(QStringLiteral("buttonCloseAbout"));
    QVERIFY(close->hasFocus());

    QTest::keyClick(close, Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(copy->hasFocus());
    QTest::keyClick(copy, Qt::Key_Space);

    const QString text = QGuiApplication::clipboard()->text();
    QVERIFY(text.contains(QStringLiteral("网络\t") + WbHttpClient::GetLibraryName() + QLatin1Char('\n')));
    QCOMPARE(text.count(QLatin1Char('\n')), facts.GetFacts().size());
    QTRY_VERIFY_WITH_TIMEOUT(HaveAnswered(facts), 20000);
}

void tst_AboutDialog::foldsWhatIsTechnical()
{
    AboutDialog dialog{QString(), nullptr};
    dialog.show();
    const auto texts = [&dialog] {
        QStringList shown;
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->isVisible())
                shown << label->text();
        return shown;
    };
    QVERIFY(texts().contains(QStringLiteral("版本")));
    QVERIFY(!texts().contains(QStringLiteral("编译器")));
    const QPoint middle = dialog.geometry().center();
    const int folded = dialog.height();

    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("buttonAboutDetails")), Qt::LeftButton);

    QVERIFY(texts().contains(QStringLiteral("编译器")));
    QVERIFY(texts().contains(WbHttpClient::GetLibraryName()));
    QVERIFY(dialog.height() > folded);
    QVERIFY((dialog.geometry().center() - middle).manhattanLength() <= 2);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("buttonAboutDetails")), Qt::LeftButton);
    QVERIFY(!texts().contains(QStringLiteral("编译器")));
    QCOMPARE(dialog.height(), folded);
}

void tst_AboutDialog::closesByEscape()
{
    AboutDialog dialog{QString(), nullptr};
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);

    QVERIFY(!dialog.isVisible());
}

void tst_AboutDialog::namesEveryFactToAScreenReader()
{
    const AboutDialog dialog{QStringLiteral(SERVER_PROGRAM), nullptr};
    const BuildInfo facts{QStringLiteral(SERVER_PROGRAM)};
    QTRY_VERIFY_WITH_TIMEOUT(HaveAnswered(facts), 20000);

    for (const BuildFact& fact : facts.GetFacts()) {
        const QString name = QStringLiteral("%1：%2").arg(fact.name, fact.value);
        const auto isNamed = [&dialog, &name] {
            const auto labels = dialog.findChildren<QLabel*>();
            return std::any_of(labels.begin(), labels.end(),
                               [&name](const QLabel* label) { return label->accessibleName() == name; });
        };
        QTRY_VERIFY_WITH_TIMEOUT(isNamed(), 20000);
    }
}

RPA_TEST_MAIN(tst_AboutDialog)
#include "tst_aboutdialog.moc"
