// SPDX-License-Identifier: Apache-2.0

#include "CommandFile_p.h"

#include <RpaProcessData/RpaPlaces.h>
#include <WbFoundation/JsonReader.h>

namespace
{
template <class Value>
struct Word
{
    const char* word;
    Value value;
};

constexpr Word<RpaArgumentType> argumentTypes[] = {
    {"text", RpaArgumentType::Text},
    {"number", RpaArgumentType::Number},
    {"switch", RpaArgumentType::Switch},
    {"choice", RpaArgumentType::Choice},
    {"expression", RpaArgumentType::Expression},
    {"variable", RpaArgumentType::Variable},
    {"process", RpaArgumentType::Process},
    {"element", RpaArgumentType::Element},
    {"file", RpaArgumentType::File},
    {"folder", RpaArgumentType::Folder},
    {"parameter", RpaArgumentType::Parameter},
};

constexpr Word<RpaArgumentForm> argumentForms[] = {
    {"code", RpaArgumentForm::Code},   {"condition", RpaArgumentForm::Condition},
    {"list", RpaArgumentForm::List},   {"columns", RpaArgumentForm::Columns},
    {"table", RpaArgumentForm::Table}, {"dictionary", RpaArgumentForm::Dictionary},
};

constexpr Word<RpaBlockKind> blockKinds[] = {
    {"none", RpaBlockKind::None},
    {"block", RpaBlockKind::Block},
    {"loop", RpaBlockKind::Loop},
    {"branch", RpaBlockKind::Branch},
};

template <class Value, size_t count>
void ReadWord(JsonReader& reader, const Word<Value> (&words)[count], Value& value)
{
    QString text;
    reader.ReadString(text);
    for (const Word<Value>& word : words) {
        if (text == QLatin1String(word.word)) {
            value = word.value;
            return;
        }
    }
    reader.Fail(QStringLiteral("未知的取值“%1”").arg(text));
}

template <class Item>
QVector<Item> ReadList(JsonReader& reader, void (*readItem)(JsonReader&, Item&))
{
    QVector<Item> items;
    if (!reader.EnterArray())
        return items;
    while (reader.NextElement()) {
        Item item;
        readItem(reader, item);
        items.append(item);
    }
    return items;
}

void ReadText(JsonReader& reader, QString& text)
{
    if (!reader.ReadString(text))
        reader.Fail(QStringLiteral("此处应为文本"));
}

// Several lines may be written as an array of lines.
void ReadLines(JsonReader& reader, QString& text)
{
    if (reader.GetType() == JsonReader::Type::Array)
        text = QStringList(ReadList<QString>(reader, ReadText).toList()).join(QLatin1Char('\n'));
    else
        ReadText(reader, text);
}

void ReadChoice(JsonReader& reader, RpaChoice& choice)
{
    reader.EnterObject();
    while (reader.NextMember())
        if (reader.IsKey("value"))
            reader.ReadString(choice.value);
        else if (reader.IsKey("title"))
            reader.ReadString(choice.title);
}

void ReadArgument(JsonReader& reader, RpaArgumentInfo& argument)
{
    reader.EnterObject();
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(argument.name);
        else if (reader.IsKey("title"))
            reader.ReadString(argument.title);
        else if (reader.IsKey("type"))
            ReadWord(reader, argumentTypes, argument.type);
        else if (reader.IsKey("form"))
            ReadWord(reader, argumentForms, argument.form);
        else if (reader.IsKey("default"))
            reader.ReadString(argument.defaultValue);
        else if (reader.IsKey("required"))
            reader.ReadBool(argument.required);
        else if (reader.IsKey("multiline"))
            reader.ReadBool(argument.multiline);
        else if (reader.IsKey("changes"))
            reader.ReadBool(argument.changes);
        else if (reader.IsKey("choices"))
            argument.choices = ReadList<RpaChoice>(reader, ReadChoice);
        else if (reader.IsKey("description"))
            reader.ReadString(argument.description);
}

void ReadOutput(JsonReader& reader, RpaOutputInfo& output)
{
    reader.EnterObject();
    while (reader.NextMember())
        if (reader.IsKey("title"))
            reader.ReadString(output.title);
        else if (reader.IsKey("type"))
            reader.ReadString(output.type);
        else if (reader.IsKey("default"))
            reader.ReadString(output.defaultName);
        else if (reader.IsKey("required"))
            reader.ReadBool(output.required);
}

void ReadPackage(JsonReader& reader, PackageItem& package)
{
    reader.EnterObject();
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(package.name);
        else if (reader.IsKey("version"))
            reader.ReadString(package.version);
}

using MemberReader = void (*)(JsonReader&, RpaCommandInfo&);
struct CommandMember
{
    const char* name;
    MemberReader read;
};

const CommandMember commandMembers[] = {
    {"name", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.name); }},
    {"title", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.title); }},
    {"group", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.group); }},
    {"description", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.description); }},
    {"icon", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.icon); }},
    {"inLoop", [](JsonReader& r, RpaCommandInfo& c) { r.ReadBool(c.onlyInLoop); }},
    {"summary", [](JsonReader& r, RpaCommandInfo& c) { ReadText(r, c.summary); }},
    {"keywords",
     [](JsonReader& r, RpaCommandInfo& c) { c.keywords = ReadList<QString>(r, ReadText).toList(); }},
    {"arguments",
     [](JsonReader& r, RpaCommandInfo& c) { c.arguments = ReadList<RpaArgumentInfo>(r, ReadArgument); }},
    {"output", [](JsonReader& r, RpaCommandInfo& c) { ReadOutput(r, c.output); }},
    {"block", [](JsonReader& r, RpaCommandInfo& c) { ReadWord(r, blockKinds, c.blockKind); }},
    {"follows",
     [](JsonReader& r, RpaCommandInfo& c) { c.follows = ReadList<QString>(r, ReadText).toList(); }},
    {"followedBy",
     [](JsonReader& r, RpaCommandInfo& c) { c.followedBy = ReadList<QString>(r, ReadText).toList(); }},
    {"python", [](JsonReader& r, RpaCommandInfo& c) { ReadLines(r, c.pythonTemplate); }},
    {"imports",
     [](JsonReader& r, RpaCommandInfo& c) { c.imports = ReadList<QString>(r, ReadText).toList(); }},
    {"packages",
     [](JsonReader& r, RpaCommandInfo& c) { c.packages = ReadList<PackageItem>(r, ReadPackage); }},
};

void ReadCommand(JsonReader& reader, RpaCommandInfo& command)
{
    reader.EnterObject();
    while (reader.NextMember()) {
        for (const CommandMember& member : commandMembers) {
            if (reader.IsKey(member.name)) {
                member.read(reader, command);
                break;
            }
        }
    }
}

// Names of the ${…} places in a template.
QStringList PlacesIn(const QString& text)
{
    QStringList names;
    RpaPlaces::Fill(text, [&names](const QString& name) {
        names.append(name);
        return QString();
    });
    return names;
}
} // namespace

CommandFile::CommandFile(const QByteArray& json)
{
    JsonReader reader(json);
    commands = ReadList<RpaCommandInfo>(reader, ReadCommand);
    if (!reader.Finish())
        problems.append(reader.GetReason());
    for (const RpaCommandInfo& command : qAsConst(commands))
        CheckCommand(command);
    if (!problems.isEmpty())
        commands.clear();
}

void CommandFile::CheckCommand(const RpaCommandInfo& command)
{
    const auto problem = [&](const QString& text) {
        problems.append(QStringLiteral("命令“%1”：%2").arg(command.name, text));
    };
    if (command.name.isEmpty() || command.title.isEmpty() || command.group.isEmpty())
        problem(QStringLiteral("缺少名称、标题或分组"));
    if (command.pythonTemplate.isEmpty())
        problem(QStringLiteral("缺少 Python 模板"));
    if (command.blockKind == RpaBlockKind::Branch && command.follows.isEmpty())
        problem(QStringLiteral("分支没有说明跟在哪个命令之后"));

    const QStringList places = PlacesIn(command.pythonTemplate) + PlacesIn(command.summary);
    for (const QString& place : places) {
        const bool isOutput = place == QLatin1String("output") && !command.output.title.isEmpty();
        if (!isOutput && !command.FindArgument(place))
            problem(QStringLiteral("模板中的“%1”不是它的参数").arg(place));
    }
    for (const RpaArgumentInfo& argument : command.arguments) {
        if (argument.name.isEmpty() || argument.title.isEmpty())
            problem(QStringLiteral("参数缺少名称或标题"));
        if ((argument.type == RpaArgumentType::Choice) == argument.choices.isEmpty())
            problem(QStringLiteral("参数“%1”的选项与类型不符").arg(argument.name));
        if (argument.form != RpaArgumentForm::Code && argument.type != RpaArgumentType::Expression)
            problem(QStringLiteral("参数“%1”的形式与类型不符").arg(argument.name));
    }
}
