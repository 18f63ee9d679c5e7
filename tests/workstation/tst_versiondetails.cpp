// SPDX-License-Identifier: Apache-2.0

#include "LivingWorkstation.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VersionFacts.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

VersionServiceRelease ReleaseOf(int state, bool present, bool withdrawn)
{
    VersionServiceRelease release;
    release.versionId = QStringLiteral("v");
    release.versionName = QStringLiteral("版本7");
    release.state = state;
    release.present = present;
    release.withdrawn = withdrawn;
    return release;
}

QStringList TextsOf(const QWidget& within, const char* name)
{
    QStringList texts;
    for (const QLabel* label : within.findChildren<QLabel*>(QLatin1String(name)))
        if (label->isVisible())
            texts << label->text();
    return texts;
}
// The first text that is higher than its place.
QString CutLabel(const QWidget& within)
{
    for (const QLabel* label : within.findChildren<QLabel*>())
        if (label->isVisible() && label->height() < label->heightForWidth(label->width()))
            return label->text();
    return QString();
}
} // namespace

// Who saved a version, when, with which note, and whether users have it: one hover or key away.
class tst_VersionDetails : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void saysWhetherUsersHaveTheVersion_data();
    void saysWhetherUsersHaveTheVersion();
    void saysWhichVersionsUsersHave();
    void tellsBesideTheOpenList();
    void tellsBelowTheClosedBox();
    void takesANoteForTheLastSave();

private:
    std::unique_ptr<LivingWorkstation> living;
};

void tst_VersionDetails::initTestCase()
{
    living = std::make_unique<LivingWorkstation>();
    QVERIFY(living->Start());
    QVERIFY(living->CreateApp(QStringLiteral("说明应用")));
    ToastWatcher toasts;
    LivingWorkstation::Key(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(toasts.GetTexts().contains(QStringLiteral("保存成功")), longWaitMs);
}

void tst_VersionDetails::cleanupTestCase()
{
    living->End();
    living.reset();
}

void tst_VersionDetails::saysWhetherUsersHaveTheVersion_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("present");
    QTest::addColumn<bool>("withdrawn");
    QTest::addColumn<QString>("said");

    QTest::newRow("develop") << 1 << false << false << QStringLiteral("使用者看不到");
    QTest::newRow("gray, used") << 2 << true << false << QStringLiteral("受邀的人现在使用");
    QTest::newRow("gray, stopped") << 2 << false << true << QStringLiteral("灰度版本：已收回");
    QTest::newRow("online, used") << 3 << true << false << QStringLiteral("使用者现在使用");
    QTest::newRow("online, taken back") << 3 << false << true << QStringLiteral("线上版本：已收回");
    QTest::newRow("online, replaced") << 3 << false << false << QStringLiteral("已由更新的版本代替");
}

void tst_VersionDetails::saysWhetherUsersHaveTheVersion()
{
    QFETCH(int, state);
    QFETCH(bool, present);
    QFETCH(bool, withdrawn);
    QFETCH(QString, said);
    VersionFacts version;
    version.state = state;
    if (state > 1)
        version.release = ReleaseOf(state, present, withdrawn);

    const QString text = VersionWords::State(version, DateLanguage::Chinese);

    QVERIFY2(text.contains(said), qPrintable(text));
}

void tst_VersionDetails::saysWhichVersionsUsersHave()
{
    VersionServiceRelease gray = ReleaseOf(2, true, false);
    gray.versionName = QStringLiteral("版本8");

    QCOMPARE(VersionWords::UsersHave({gray, ReleaseOf(3, true, false), ReleaseOf(3, false, false)}),
             QStringLiteral("使用者现在使用：灰度“版本8”、线上“版本7”"));
    QCOMPARE(VersionWords::UsersHave({ReleaseOf(3, false, true)}),
             QStringLiteral("使用者现在没有可用的版本"));
}

void tst_VersionDetails::tellsBesideTheOpenList()
{
    LivingWorkstation::Key(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);

    QTRY_VERIFY(LivingWorkstation::Shown("versionHint"));
    QWidget* const hint = LivingWorkstation::Shown("versionHint");
    QTRY_COMPARE_WITH_TIMEOUT(TextsOf(*hint, "labelVersionSave").size(), 1, longWaitMs);
    const QString saved = TextsOf(*hint, "labelVersionSave").first();
    QVERIFY2(saved.contains(QStringLiteral("本机作者")), qPrintable(saved));
    QVERIFY(saved.contains(QString::number(QDate::currentDate().year())));
    // Saves and releases are two answers, in any order.
    QTRY_COMPARE_WITH_TIMEOUT(TextsOf(*hint, "labelUsersHave"),
                              QStringList{QStringLiteral("使用者现在没有可用的版本")}, longWaitMs);
    const auto* box = LivingWorkstation::ShownAs<QComboBox>("version_combo");
    QTRY_COMPARE(CutLabel(*hint), QString());
    QVERIFY2(!hint->frameGeometry().intersects(box->view()->window()->frameGeometry()),
             "it lies over the list");
    for (const char* name : {"pushButtonSave", "pushButtonSaveAs", "pushButtonBeta"}) {
        const QWidget* const button = LivingWorkstation::Shown(name);
        QVERIFY(button);
        const QRect place(button->mapToGlobal(QPoint()), button->size());
        QVERIFY2(hint->frameGeometry().top() > place.bottom(), name);
    }
    for (const auto* save : hint->findChildren<QLabel*>(QStringLiteral("labelVersionSave")))
        QVERIFY2(save->height() < 2 * save->fontMetrics().height(), "it breaks the line with the name");

    LivingWorkstation::Key(Qt::Key_Escape);

    QTRY_VERIFY(!LivingWorkstation::Shown("versionHint"));
}

void tst_VersionDetails::tellsBelowTheClosedBox()
{
    auto* box = LivingWorkstation::ShownAs<QComboBox>("version_combo");
    QHelpEvent rests(QEvent::ToolTip, QPoint(5, 5), box->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(box->lineEdit(), &rests);

    QWidget* const hint = LivingWorkstation::Shown("versionHint");
    QVERIFY(hint);
    QCOMPARE(TextsOf(*hint, "labelVersionName"), QStringList{box->lineEdit()->text()});
    QVERIFY(hint->y() > box->mapToGlobal(QPoint()).y() + box->height() - 1);

    QEvent leaves(QEvent::Leave);
    QApplication::sendEvent(box->lineEdit(), &leaves);

    QVERIFY(!hint->isVisible());
}

void tst_VersionDetails::takesANoteForTheLastSave()
{
    LivingWorkstation::Key(Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_VERIFY(LivingWorkstation::HasFocus("listVersions"));
    auto* note = LivingWorkstation::ShownAs<QLineEdit>("editNote");
    QTRY_VERIFY_WITH_TIMEOUT(note->isEnabled(), longWaitMs);
    QVERIFY(LivingWorkstation::TabTo("editNote"));
    LivingWorkstation::Write(QStringLiteral("登录页换了按钮"));
    LivingWorkstation::Key(Qt::Key_Return);

    const auto* said = LivingWorkstation::ShownAs<QLabel>("labelNote");
    QTRY_COMPARE_WITH_TIMEOUT(said->text(), QStringLiteral("说明已保存。"), longWaitMs);
    QVERIFY(LivingWorkstation::Shown("VersionDialog"));
    LivingWorkstation::Key(Qt::Key_Escape);
    QTRY_VERIFY(!LivingWorkstation::Shown("VersionDialog"));

    // Another look asks the server again.
    LivingWorkstation::Key(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_VERIFY(LivingWorkstation::Shown("versionHint"));
    QTRY_COMPARE_WITH_TIMEOUT(TextsOf(*LivingWorkstation::Shown("versionHint"), "labelVersionNote"),
                              QStringList{QStringLiteral("说明：登录页换了按钮")}, longWaitMs);
    LivingWorkstation::Key(Qt::Key_Escape);
}

RPA_TEST_MAIN(tst_VersionDetails)

#include "tst_versiondetails.moc"
