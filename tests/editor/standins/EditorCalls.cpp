// SPDX-License-Identifier: Apache-2.0

#include "EditorCalls.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>
#include <WbCore/WbGlobalData.h>

#include <QtTest>

void EditorCalls::SetUp()
{
    StandInRequests::Reset();
    StandInEngine::Reset();
    WbGlobalData::Instance()->SetPin(QStringLiteral("author-1"));
    RpaGlobalDataManager::Instance()->SetSuperAdmin(true);
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    RpaSuperDir::Instance()->SetTemplateDirs(QString(), QString());
    WbBrowserLite::Instance()->SetBrowserFactory([](QWidget* pane) { return new NotingBrowser(pane); });
    monitor = std::make_unique<NotingMonitor>();
    packages = std::make_unique<NotingPackages>();
}

void EditorCalls::cleanup()
{
    author.reset();
    packages.reset();
    monitor.reset();
    WbBrowserLite::Instance()->SetBrowserFactory(nullptr);
}

RobotExecuteInfo EditorCalls::App(int kind)
{
    RobotExecuteInfo info;
    info.SetAppId(QStringLiteral("app1"));
    info.SetAppName(QStringLiteral("应用一"));
    info.SetCreator(QStringLiteral("author-1"));
    info.SetOxsAppKey(QStringLiteral("key1"));
    info.SetAppKind(kind);
    return info;
}

QVector<RpaAppSnapshotPtr> EditorCalls::Versions(AppSnapshotState stateOfTheThird)
{
    return {StandInRequests::Version(QStringLiteral("v1"), QStringLiteral("甲版"), AppSnapshotDevelop,
                                     QStringLiteral("第一稿")),
            StandInRequests::Version(QStringLiteral("v2"), QStringLiteral("乙版"), AppSnapshotDevelop,
                                     QStringLiteral("第二稿")),
            StandInRequests::Version(QStringLiteral("v3"), QStringLiteral("丙版"), stateOfTheThird,
                                     QStringLiteral("第三稿"))};
}

QByteArray EditorCalls::Content(const QString& instructions, const Fill& fill)
{
    RpaAppData content;
    content.InitDefault();
    content.SetVersion(QStringLiteral("1.0.0"));
    content.GetAppExtendInfo()->manual = instructions;
    if (fill)
        fill(content);
    return content.ToJson();
}

void EditorCalls::Open(const QVector<RpaAppSnapshotPtr>& versions, const QByteArray& content, int kind)
{
    author = std::make_unique<EditorDriver>();
    author->GetEditor()->SetExecuteInfo(App(kind));
    StandInRequests::AnswerList(versions);
    StandInRequests::AnswerData(content);
    QCOMPARE(author->GetVersions().size(), versions.size());
    CallLog::Take();
}

void EditorCalls::Open(AppSnapshotState stateOfTheThird)
{
    Open(Versions(stateOfTheThird), Content(QStringLiteral("content of v1")));
    QCOMPARE(author->GetSelectedVersion(), QStringLiteral("甲版"));
}

void EditorCalls::PickWithoutData(const QString& name)
{
    QVERIFY(author->PickVersion(name));
    QCOMPARE(author->GetSelectedVersion(), name);
}

void EditorCalls::PickAndLoad(const QString& name)
{
    PickWithoutData(name);
    StandInRequests::AnswerData(Content(QStringLiteral("content of ") + name));
    CallLog::Take();
}
