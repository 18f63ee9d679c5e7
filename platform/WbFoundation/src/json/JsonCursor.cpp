// SPDX-License-Identifier: Apache-2.0

#include "JsonCursor_p.h"
#include "JsonNumber_p.h"

#include <cstring>

namespace
{
constexpr int literalTrue = 4;
constexpr int literalFalse = 5;

JsonReader::Type TypeOf(char c)
{
    switch (c) {
    case '{':
        return JsonReader::Type::Object;
    case '[':
        return JsonReader::Type::Array;
    case '"':
        return JsonReader::Type::String;
    case 't':
    case 'f':
        return JsonReader::Type::Bool;
    case 'n':
        return JsonReader::Type::Null;
    default:
        return c == '-' || (c >= '0' && c <= '9') ? JsonReader::Type::Number : JsonReader::Type::None;
    }
}

QString ReasonOf(JsonString::Error error)
{
    switch (error) {
    case JsonString::Error::NoEnd:
        return QStringLiteral("字符串没有结束");
    case JsonString::Error::ControlCharacter:
        return QStringLiteral("字符串中含有控制字符");
    case JsonString::Error::Escape:
        return QStringLiteral("字符串中含有无效的转义");
    case JsonString::Error::Encoding:
        return QStringLiteral("字符串不是有效的 UTF-8 文本");
    case JsonString::Error::None:
        break;
    }
    return QString();
}
} // namespace

JsonCursor::JsonCursor(const QByteArray& json, const JsonLimits& jsonLimits)
    : limits(jsonLimits), at(json.constData()), begin(at), end(at + json.size())
{
    if (json.size() > limits.sizeBytes) {
        Fail(QStringLiteral("数据超过 %1 MB").arg(limits.sizeBytes / (1024 * 1024)));
        return;
    }
    SkipBlanks();
    StandBeforeValue();
}

void JsonCursor::SkipBlanks()
{
    while (at < end && (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t'))
        ++at;
}

bool JsonCursor::StandBeforeValue()
{
    type = at < end ? TypeOf(*at) : Type::None;
    if (type == Type::None)
        Fail(at < end ? QStringLiteral("此处应为一个值") : QStringLiteral("数据不完整"));
    return !failed;
}

bool JsonCursor::Enter()
{
    if (failed)
        return false;
    if (static_cast<int>(levels.size()) >= limits.depth) {
        Fail(QStringLiteral("嵌套超过 %1 层").arg(limits.depth));
        return false;
    }
    const bool isObject = type == Type::Object;
    levels.push_back({isObject, true});
    if (isObject)
        keys.Open();
    ++at;
    type = Type::None;
    return true;
}

bool JsonCursor::Next()
{
    if (type != Type::None)
        Skip();
    if (failed || levels.empty())
        return false;

    SkipBlanks();
    Level& level = levels.back();
    if (at < end && *at == (level.isObject ? '}' : ']')) {
        Leave();
        return false;
    }
    if (!level.isFirst) {
        if (at == end || *at != ',') {
            Fail(at == end ? QStringLiteral("数据不完整") : QStringLiteral("此处应为逗号或结束括号"));
            return false;
        }
        ++at;
        SkipBlanks();
    }
    level.isFirst = false;
    if (!IsWithinCounts(level.isObject) || (level.isObject && !TakeKey()))
        return false;
    SkipBlanks();
    return StandBeforeValue();
}

void JsonCursor::Leave()
{
    if (levels.back().isObject)
        keys.Close();
    levels.pop_back();
    ++at;
    type = Type::None;
}

bool JsonCursor::IsWithinCounts(bool isObject)
{
    if (isObject && ++memberCount > limits.members)
        Fail(QStringLiteral("成员超过 %1 个").arg(limits.members));
    else if (!isObject && ++elementCount > limits.elements)
        Fail(QStringLiteral("数组元素超过 %1 个").arg(limits.elements));
    return !failed;
}

bool JsonCursor::TakeKey()
{
    member = at;
    JsonString string;
    if (at == end || *at != '"') {
        Fail(at == end ? QStringLiteral("数据不完整") : QStringLiteral("此处应为成员名称"));
        return false;
    }
    if (!Scan(string, limits.keyBytes))
        return false;
    string.GetUtf8(key);
    if (!keys.Add(key)) {
        Fail(QStringLiteral("成员“%1”重复").arg(QString::fromUtf8(key)));
        return false;
    }
    SkipBlanks();
    if (at == end || *at != ':') {
        Fail(at == end ? QStringLiteral("数据不完整") : QStringLiteral("此处应为冒号"));
        return false;
    }
    ++at;
    return true;
}

bool JsonCursor::Scan(JsonString& string, int maxBytes)
{
    string = JsonString::Scan(at + 1, end);
    if (string.error != JsonString::Error::None) {
        Fail(ReasonOf(string.error));
        return false;
    }
    // Escapes are longer than what they stand for: only then is the length worth a decoding.
    bool tooLong = string.GetRawLength() > maxBytes;
    if (tooLong && string.hasEscapes) {
        QByteArray utf8;
        string.GetUtf8(utf8);
        tooLong = utf8.size() > maxBytes;
    }
    if (tooLong) {
        Fail(QStringLiteral("文本超过 %1 字节").arg(maxBytes));
        return false;
    }
    at = string.end + 1;
    return true;
}

bool JsonCursor::TakeLiteral(const char* literal, int length)
{
    if (end - at < length || std::memcmp(at, literal, static_cast<size_t>(length)) != 0) {
        Fail(QStringLiteral("此处应为一个值"));
        return false;
    }
    at += length;
    type = Type::None;
    return true;
}

bool JsonCursor::TakeBool(bool& value)
{
    if (failed)
        return false;
    value = *at == 't';
    return value ? TakeLiteral("true", literalTrue) : TakeLiteral("false", literalFalse);
}

bool JsonCursor::TakeNumber(JsonNumber& number)
{
    if (failed)
        return false;
    number = JsonNumber::Scan(at, end);
    if (!number.end || !number.inRange) {
        Fail(number.end ? QStringLiteral("数值超出 ±2^53") : QStringLiteral("数值格式错误"));
        return false;
    }
    at = number.end;
    type = Type::None;
    return true;
}

bool JsonCursor::TakeString(JsonString& string)
{
    if (failed || !Scan(string, limits.stringBytes))
        return false;
    type = Type::None;
    return true;
}

void JsonCursor::SkipSimple()
{
    switch (type) {
    case Type::Bool: {
        bool value;
        TakeBool(value);
        break;
    }
    case Type::Number: {
        JsonNumber number;
        TakeNumber(number);
        break;
    }
    case Type::String: {
        JsonString string;
        TakeString(string);
        break;
    }
    case Type::Null:
        TakeLiteral("null", 4);
        break;
    default:
        break;
    }
}

void JsonCursor::Skip()
{
    const size_t depth = levels.size();
    do {
        if (type == Type::Object || type == Type::Array)
            Enter();
        else
            SkipSimple();
        while (!failed && levels.size() > depth && !Next()) {
        }
    } while (!failed && levels.size() > depth);
}

bool JsonCursor::Finish()
{
    if (failed)
        return false;
    if (type != Type::None)
        Skip();
    while (!failed && !levels.empty())
        Next();
    SkipBlanks();
    if (!failed && at != end)
        Fail(QStringLiteral("数据之后还有多余内容"));
    return !failed;
}

void JsonCursor::Fail(const QString& why)
{
    if (failed)
        return;
    failed = true;
    type = Type::None;
    reason = QStringLiteral("第 %1 字节：%2").arg(at - begin + 1).arg(why);
}
