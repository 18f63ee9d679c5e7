// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/AppOutline.h>
#include <WbFoundation/JsonReader.h>

#include <algorithm>

namespace
{
using Type = JsonReader::Type;

struct Member
{
    const char* name;
    Type type;
    const char* list; // of an object: its array of objects; null: none
    bool isNeeded;
};

constexpr Member members[] = {
    {"uiData", Type::Object, "pages", true},          {"processData", Type::Object, "processes", true},
    {"version", Type::String, nullptr, false},        {"extendInfo", Type::Object, nullptr, false},
    {"packageInfo", Type::Object, "packages", false}, {"htmlNodes", Type::Object, "nodes", false},
    {"uiaNodes", Type::Object, "nodes", false},
};

const Member* FindMember(const JsonReader& reader)
{
    const auto* const member = std::find_if(std::begin(members), std::end(members),
                                            [&](const Member& entry) { return reader.IsKey(entry.name); });
    return member == std::end(members) ? nullptr : member;
}

// Goes past the array; false when it is none, or one of anything but objects.
bool IsListOfObjects(JsonReader& reader)
{
    const bool isArray = reader.GetType() == Type::Array;
    bool isGood = isArray;
    reader.EnterArray();
    while (isArray && reader.NextElement()) {
        isGood = isGood && reader.GetType() == Type::Object;
        reader.Skip();
    }
    return isGood;
}

// Goes past the value of the member; false when it is not of its kind.
bool IsOfKind(JsonReader& reader, const Member& member)
{
    const bool isGood = reader.GetType() == member.type;
    if (!isGood || !member.list) {
        reader.Skip();
        return isGood;
    }
    // Without its list, the part would be opened as one with nothing in it.
    bool isListGood = false;
    reader.EnterObject();
    while (reader.NextMember())
        if (reader.IsKey(member.list))
            isListGood = IsListOfObjects(reader);
    return isListGood;
}
} // namespace

AppOutline AppOutline::Read(const QByteArray& json, const JsonLimits& limits)
{
    AppOutline outline;
    JsonReader reader(json, limits);
    auto missing = std::count_if(std::begin(members), std::end(members),
                                 [](const Member& member) { return member.isNeeded; });
    QString broken;
    const bool isObject = reader.GetType() == Type::Object;
    if (isObject)
        reader.EnterObject();
    while (isObject && reader.NextMember()) {
        const Member* const member = FindMember(reader);
        if (!member)
            continue;
        missing -= member->isNeeded ? 1 : 0;
        const bool isVersion = member->type == Type::String;
        const bool isGood = isVersion ? reader.ReadString(outline.version) : IsOfKind(reader, *member);
        if (!isGood && broken.isEmpty())
            broken = QString::fromLatin1(member->name);
    }
    if (!reader.Finish())
        outline.Refuse(Kind::NotJson, reader.GetReason());
    else if (!broken.isEmpty())
        outline.Refuse(Kind::Broken, QStringLiteral("应用数据的“%1”不是应有的类型").arg(broken));
    else if (missing > 0)
        outline.Refuse(Kind::Foreign, QStringLiteral("不是应用的内容"));
    return outline;
}

void AppOutline::Refuse(Kind why, const QString& text)
{
    kind = why;
    problem = text;
}
