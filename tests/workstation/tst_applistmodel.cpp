// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "OpenedApps.h"
#include "TestFolder.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

namespace
{
AppRecord App(const QString& id, const QString& name, int kind, const QString& creator)
{
    AppRecord app;
    app.id = id;
    app.name = name;
    app.kind = kind;
    app.creatorPin = creator;
    app.creatorName = creator == QLatin1String("me") ? QStringLiteral("我") : QString();
    app.changedAt = QDateTime(QDate(2026, 3, 5), QTime(14, 7));
    return app;
}

QVector<AppRecord> TwoApps()
{
    return {App(QStringLiteral("a"), QStringLiteral("开票"), AppKindVisual, QStringLiteral("me")),
            App(QStringLiteral("b"), QStringLiteral("对账"), AppKindProgram, QStringLiteral("other"))};
}
} // namespace

class tst_AppListModel : public QObject
{
    Q_OBJECT

private slots:
    void showsTheAppsInTheGivenOrder();
    void tellsOwnAppsFromThoseOfOthers();
    void writesTheLastChangeInTheLanguageOfDates();
    void readsAloudWhatTheCardShows();
    void tellsStateTagsAndWhoChangedAnApp();
    void answersNothingOutsideTheList();
    void sortsByWhenAnAccountOpenedAnApp();
};

void tst_AppListModel::showsTheAppsInTheGivenOrder()
{
    AppListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);

    model.SetApps(TwoApps());

    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(0).data().toString(), QStringLiteral("开票"));
    QCOMPARE(model.index(1).data(AppListModel::KindNameRole).toString(), QStringLiteral("编程流程"));
    QCOMPARE(model.RowOf(QStringLiteral("b")), 1);
}

void tst_AppListModel::tellsOwnAppsFromThoseOfOthers()
{
    AppListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.SetApps(TwoApps());
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

    model.SetAccount(QStringLiteral("me"));

    QCOMPARE(changed.size(), 1);
    QVERIFY(model.index(0).data(AppListModel::OwnRole).toBool());
    QVERIFY(!model.index(1).data(AppListModel::OwnRole).toBool());
}

void tst_AppListModel::writesTheLastChangeInTheLanguageOfDates()
{
    AppListModel model;
    model.SetApps(TwoApps());

    model.SetDateLanguage(DateLanguage::English);

    QCOMPARE(model.index(0).data(AppListModel::ChangedRole).toString(),
             QStringLiteral("Mar 5, 2026 2:07 PM"));
}

void tst_AppListModel::readsAloudWhatTheCardShows()
{
    AppListModel model;
    model.SetDateLanguage(DateLanguage::Chinese);
    model.SetApps(TwoApps());

    const QString text = model.index(1).data(Qt::AccessibleTextRole).toString();

    QCOMPARE(text, QStringLiteral("对账，编程流程，开发中，创建者other，修改于2026年3月5日 14:07"));
}

void tst_AppListModel::tellsStateTagsAndWhoChangedAnApp()
{
    AppListModel model;
    model.SetDateLanguage(DateLanguage::Chinese);
    QVector<AppRecord> apps = TwoApps();
    apps[0].state = 3;
    apps[0].changedByName = QStringLiteral("李四");
    apps[0].tags = QStringList{QStringLiteral("财务"), QStringLiteral("月结")};
    apps[1].state = 2;
    apps[1].tags = QStringList{QStringLiteral("月结")};
    model.SetApps(apps);

    QCOMPARE(model.index(0).data(AppListModel::StateNameRole).toString(), QStringLiteral("已上线"));
    QCOMPARE(model.index(1).data(AppListModel::StateNameRole).toString(), QStringLiteral("灰度中"));
    QCOMPARE(model.index(0).data(AppListModel::ChangedByRole).toString(), QStringLiteral("李四"));
    QCOMPARE(
        model.index(0).data(Qt::AccessibleTextRole).toString(),
        QStringLiteral("开票，可视化流程，已上线，标签财务、月结，创建者我，李四修改于2026年3月5日 14:07"));
    QCOMPARE(model.GetTags().size(), 2);
}

void tst_AppListModel::sortsByWhenAnAccountOpenedAnApp()
{
    const TestFolder folder;
    const QString file = folder.filePath(QStringLiteral("opened.json"));
    const auto at = [](int seconds) { return QDateTime::fromSecsSinceEpoch(1000 + seconds); };
    const QString me = QStringLiteral("me");
    const auto order = [&](const QString& account) {
        QStringList ids;
        const QString none;
        for (const AppRecord& app : OpenedApps(file).Sorted(
                 account, {App(QStringLiteral("a"), none, 0, me), App(QStringLiteral("b"), none, 0, me),
                           App(QStringLiteral("c"), none, 0, me), App(QStringLiteral("d"), none, 0, me)}))
            ids << app.id;
        return ids.join(QString());
    };
    QCOMPARE(order(me), QStringLiteral("abcd"));

    OpenedApps(file).Note(me, QStringLiteral("d"), at(1));
    OpenedApps(file).Note(me, QStringLiteral("b"), at(2));

    QCOMPARE(order(me), QStringLiteral("bdac"));
    QCOMPARE(order(QStringLiteral("other")), QStringLiteral("abcd"));
    OpenedApps(file).Note(me, QStringLiteral("d"), at(3));
    QCOMPARE(order(me), QStringLiteral("dbac"));
}

void tst_AppListModel::answersNothingOutsideTheList()
{
    AppListModel model;
    model.SetApps(TwoApps());

    QVERIFY(model.AppAt(-1).id.isEmpty());
    QVERIFY(model.AppAt(2).id.isEmpty());
    QCOMPARE(model.RowOf(QStringLiteral("c")), -1);
    QVERIFY(!model.data(QModelIndex()).isValid());
}

QTEST_GUILESS_MAIN(tst_AppListModel)
#include "tst_applistmodel.moc"
