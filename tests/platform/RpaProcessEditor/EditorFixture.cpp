// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"

#include "TestFolder.h"

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QFile>
#include <QInputMethodEvent>
#include <QtTest>

namespace
{
const char commands[] = R"json([
 {"name":"t-log","title":"输出日志","group":"测试","icon":"log","description":"写一行日志","keywords":["print"],
  "arguments":[{"name":"text","title":"内容","type":"text","required":true},
   {"name":"level","title":"级别","type":"choice","default":"info",
    "choices":[{"value":"info","title":"信息"},{"value":"error","title":"错误"}]}],
  "summary":"输出 ${text}，级别 ${level}","python":"print(${text}, ${level})"},
 {"name":"t-if","title":"如果","group":"流程控制","icon":"branch","description":"条件成立时运行",
  "arguments":[{"name":"condition","title":"条件","type":"expression","required":true}],
  "block":"block","summary":"当 ${condition} 成立","python":"if ${condition}:"},
 {"name":"t-else","title":"否则","group":"流程控制","icon":"branch","description":"条件不成立时运行",
  "block":"branch","follows":["t-if"],"summary":"条件不成立时","python":"else:"},
 {"name":"t-read","title":"读取文件","group":"文件","icon":"file","description":"读出全部内容",
  "arguments":[{"name":"path","title":"文件","type":"file","required":true}],
  "output":{"title":"内容","type":"text","default":"content","required":true},
  "summary":"读取 ${path} 到 ${output}","python":"${output} = open(${path}).read()"},
 {"name":"t-call","title":"运行流程","group":"流程控制","icon":"subprocess","description":"运行另一个流程",
  "arguments":[{"name":"process","title":"流程","type":"process","required":true}],
  "summary":"运行 ${process}","python":"run(${process})"},
 {"name":"t-set","title":"设置变量","group":"变量","icon":"variable","description":"给变量一个值",
  "arguments":[{"name":"variable","title":"变量","type":"variable","required":true},
   {"name":"value","title":"值","type":"expression","required":true}],
  "summary":"${variable} = ${value}","python":"${variable} = ${value}"},
 {"name":"t-wait","title":"等待","group":"流程控制","icon":"wait","description":"等待若干秒",
  "arguments":[{"name":"seconds","title":"秒数","type":"number","default":"1"},
   {"name":"quiet","title":"不写日志","type":"switch","default":"false"},
   {"name":"why","title":"原因","type":"text","multiline":true}],
  "summary":"等待 ${seconds} 秒","python":"sleep(${seconds}, ${quiet}, ${why})"}
])json";
} // namespace

void EditorFixture::AddCommands()
{
    static bool added = false;
    if (added)
        return;
    added = true;
    TestFolder folder;
    QFile file(folder.filePath(QStringLiteral("test.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(commands);
    file.close();
    QCOMPARE(RpaCommandCatalogue::Instance()->AddFolder(folder.path()), QStringList());
}

RpaStatement EditorFixture::Statement(const QString& command, const QString& id,
                                      const QVector<RpaStatement>& children)
{
    RpaStatement statement;
    statement.id = id;
    statement.command = command;
    statement.children = children;
    return statement;
}

RpaStatement EditorFixture::Log(const QString& id)
{
    RpaStatement statement = Statement(QStringLiteral("t-log"), id);
    statement.arguments.insert(QStringLiteral("text"), id);
    statement.arguments.insert(QStringLiteral("level"), QStringLiteral("info"));
    return statement;
}

QVector<RpaStatement> EditorFixture::SomeStatements()
{
    RpaStatement block = Statement(QStringLiteral("t-if"), QStringLiteral("b"),
                                   {Log(QStringLiteral("c")), Log(QStringLiteral("d"))});
    block.arguments.insert(QStringLiteral("condition"), QStringLiteral("x > 1"));
    return {Log(QStringLiteral("a")), block, Log(QStringLiteral("e"))};
}

RpaAppDataPtr EditorFixture::App(const QVector<RpaStatement>& statements)
{
    AddCommands();
    auto app = RpaAppDataPtr::create();
    ProcessDataManager* manager = app->GetProcessDataManager();
    manager->Clear();
    manager->AddProcess(QStringLiteral("主流程"))->SetStatements(statements);
    manager->AddProcess(QStringLiteral("子流程"));
    app->SetModified(false);
    return app;
}

RpaProcess* EditorFixture::Main(const RpaAppDataPtr& app)
{
    return app->GetProcessDataManager()->GetProcess(0);
}

void EditorFixture::Type(QWidget* target, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80) {
            QTest::keyClick(target, c.toLatin1());
            continue;
        }
        QInputMethodEvent composing(QString(c), {});
        QCoreApplication::sendEvent(target, &composing);
        QInputMethodEvent commit;
        commit.setCommitString(QString(c));
        QCoreApplication::sendEvent(target, &commit);
    }
}

namespace
{
QString OutlineOf(const RpaStatementNode& node)
{
    QStringList parts;
    for (int row = 0; row < node.GetChildCount(); ++row) {
        const RpaStatementNode* child = node.GetChild(row);
        QString part = child->GetId();
        if (child->GetChildCount() > 0)
            part += QLatin1Char('(') + OutlineOf(*child) + QLatin1Char(')');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}
} // namespace

QString EditorFixture::Outline(const RpaProcess& process)
{
    return OutlineOf(*process.GetRoot());
}
