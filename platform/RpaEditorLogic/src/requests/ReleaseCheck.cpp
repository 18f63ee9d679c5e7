// SPDX-License-Identifier: Apache-2.0

#include "ReleaseCheck_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcessCheck.h>
#include <WbFoundation/JsonReader.h>

#include <QSet>

namespace
{
// Of an app's JSON, what the check looks at. Not RpaAppData: that lives on the GUI thread.
class CheckedApp
{
public:
    // False when it cannot be read.
    bool Read(const QByteArray& json);
    QString FindProblem() const;

private:
    void ReadKind(JsonReader& reader);
    void ReadPages(JsonReader& reader);
    void ReadPage(JsonReader& reader);
    void ReadButton(JsonReader& reader);
    QStringList GetElementIds() const;

    struct Button
    {
        QString text;
        QString processName;
    };

    int kind = 0;
    QVector<Button> buttons;
    ProcessDataManager processes;
    RpaHtmlNodeManager elements;
};

bool CheckedApp::Read(const QByteArray& json)
{
    JsonReader reader(json);
    IJsonParser::Commit takeProcesses;
    IJsonParser::Commit takeElements;
    if (!reader.EnterObject())
        return false;
    while (reader.NextMember())
        if (reader.IsKey("extendInfo"))
            ReadKind(reader);
        else if (reader.IsKey("uiData"))
            ReadPages(reader);
        else if (reader.IsKey("processData"))
            takeProcesses = processes.ReadJson(reader);
        else if (reader.IsKey("htmlNodes"))
            takeElements = elements.ReadJson(reader);
    if (!reader.Finish())
        return false;
    for (const auto& take : {takeProcesses, takeElements})
        if (take)
            take();
    return true;
}

void CheckedApp::ReadKind(JsonReader& reader)
{
    if (!reader.EnterObject())
        return;
    while (reader.NextMember())
        if (reader.IsKey("appKind"))
            reader.ReadInt(kind);
}

void CheckedApp::ReadPages(JsonReader& reader)
{
    if (!reader.EnterObject())
        return;
    while (reader.NextMember()) {
        if (!reader.IsKey("pages") || !reader.EnterArray())
            continue;
        while (reader.NextElement())
            if (reader.EnterObject())
                ReadPage(reader);
    }
}

void CheckedApp::ReadPage(JsonReader& reader)
{
    while (reader.NextMember()) {
        if (!reader.IsKey("tools") || !reader.EnterArray())
            continue;
        while (reader.NextElement())
            if (reader.EnterObject())
                ReadButton(reader);
    }
}

void CheckedApp::ReadButton(JsonReader& reader)
{
    Button button;
    while (reader.NextMember())
        if (reader.IsKey("text"))
            reader.ReadString(button.text);
        else if (reader.IsKey("processName"))
            reader.ReadString(button.processName);
    if (!button.processName.isEmpty())
        buttons.append(button);
}

QStringList CheckedApp::GetElementIds() const
{
    QStringList ids;
    const QVector<RpaNode> nodes = elements.GetNodes();
    for (const RpaNode& node : nodes)
        ids.append(node.id);
    return ids;
}

QString CheckedApp::FindProblem() const
{
    if (kind != 0)
        return {};
    RpaProcessCheck check(processes);
    check.SetElementIds(GetElementIds());
    QSet<QString> checked;
    for (const Button& button : buttons) {
        if (checked.contains(button.processName))
            continue;
        checked.insert(button.processName);
        if (!processes.FindProcess(button.processName))
            return QStringLiteral("按钮“%1”要运行的流程“%2”不存在").arg(button.text, button.processName);
        const QList<RpaCheckInfo> findings = check.Check(button.processName);
        if (findings.isEmpty())
            continue;
        const RpaCheckInfo& first = findings.first();
        return QStringLiteral("【%1】%2，%3").arg(first.processName, first.message, first.remedy);
    }
    return {};
}
} // namespace

QString ReleaseCheck::FindProblem(const QByteArray& appJson)
{
    CheckedApp app;
    return app.Read(appJson) ? app.FindProblem() : QStringLiteral("内容无法读取");
}
