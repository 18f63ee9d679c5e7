// SPDX-License-Identifier: Apache-2.0

// Versions whose content is no app, or one of a newer client in another shape.
#include "EditorDriver.h"
#include "EditorWorld.h"
#include "FaultServer.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QtTest>

namespace
{
FaultServer::Reply Content(const QByteArray& manual)
{
    return FaultServer::Data(VersionReplies::App(R"("extendInfo":{"manual":")" + manual + "\"}"), 1);
}
} // namespace

class StrangeContentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }

    void staysWithTheOpenVersion_data()
    {
        QTest::addColumn<QByteArray>("strange");
        QTest::addColumn<QString>("notice");

        const QString tooNew = QStringLiteral("当前版本过低，请更新为最新版本");
        const QString unknown = QStringLiteral("该版本的内容无法识别，没有打开");
        QTest::newRow("pages of another kind")
            << VersionReplies::App().replace(R"({"pages":[]})", "[]") << unknown;
        QTest::newRow("another program's record") << QByteArray(R"({"name":"x"})") << unknown;
        QTest::newRow("a newer client's pages of another kind")
            << VersionReplies::App().replace(R"({"pages":[]})", "[]").replace("1.0.0", "2.0.0") << tooNew;
        QTest::newRow("a newer client's other parts")
            << QByteArray(R"({"version":"1.1.0","screens":[{"name":"x"}]})") << tooNew;
    }

    void staysWithTheOpenVersion()
    {
        QFETCH(QByteArray, strange);
        QFETCH(QString, notice);
        world.SignIn();
        const RobotExecuteInfo app = world.CreateApp();
        FaultServer server;
        server.SetScript([&, id = app.GetAppId()](const FaultServer::Request& request) {
            VersionReplies::Version good;
            good.id = QStringLiteral("good");
            good.name = QStringLiteral("甲");
            good.appId = id;
            VersionReplies::Version bad = good;
            bad.id = QStringLiteral("bad");
            bad.name = QStringLiteral("乙");
            if (request.method == "PUT") {
                good.revision = 2;
                good.content = request.body;
                return VersionReplies::Saved(200, good);
            }
            if (request.path.endsWith("good/data"))
                return Content("content");
            return request.path.endsWith("bad/data") ? FaultServer::Data(strange, 1)
                                                     : VersionReplies::List({good, bad});
        });
        world.UseServer(server.GetUrl());
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetInstructions(), QStringLiteral("content"));
        ToastWatcher toasts;

        QVERIFY(author.PickVersion(QStringLiteral("乙")));

        QTRY_COMPARE(toasts.GetCount(), 1);
        QVERIFY2(toasts.GetTexts().first().startsWith(notice), qPrintable(toasts.GetTexts().first()));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("甲"));
        QCOMPARE(author.GetInstructions(), QStringLiteral("content"));

        // What is saved now goes where it belongs.
        QTRY_COMPARE(Loads(server), 3);
        author.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts().last(), QStringLiteral("保存成功"));
        QCOMPARE(server.GetRequests().last().path, QByteArray("/api/v1/versions/good"));
    }

private:
    static int Loads(const FaultServer& server)
    {
        const QVector<FaultServer::Request> requests = server.GetRequests();
        return int(std::count_if(requests.cbegin(), requests.cend(),
                                 [](const auto& request) { return request.path.endsWith("/data"); }));
    }

    EditorWorld world;
};

RPA_TEST_MAIN(StrangeContentTest)
#include "tst_strangecontent.moc"
