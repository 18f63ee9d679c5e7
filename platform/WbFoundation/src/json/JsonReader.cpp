// SPDX-License-Identifier: Apache-2.0

#include "JsonCursor_p.h"
#include "JsonNumber_p.h"
#include "Utf8_p.h"

#include <WbFoundation/JsonReader.h>

#include <QVariantMap>

#include <cstring>
#include <limits>

class JsonReader::Private
{
public:
    Private(const QByteArray& json, const JsonLimits& limits) : cursor(json, limits) {}

    // Whether the next value is of the type; when not, the cursor goes past it.
    bool Expect(Type type)
    {
        if (cursor.GetType() == type)
            return true;
        cursor.Skip();
        return false;
    }

    JsonCursor cursor;
};

JsonReader::JsonReader(const QByteArray& json, const JsonLimits& limits)
    : d(std::make_unique<Private>(json, limits))
{
}

JsonReader::~JsonReader() = default;

JsonReader::Type JsonReader::GetType() const
{
    return d->cursor.GetType();
}

bool JsonReader::EnterObject()
{
    return d->Expect(Type::Object) && d->cursor.Enter();
}

bool JsonReader::EnterArray()
{
    return d->Expect(Type::Array) && d->cursor.Enter();
}

bool JsonReader::RequireObject(const QString& refusal)
{
    if (GetType() != Type::Object)
        Fail(refusal);
    return EnterObject();
}

bool JsonReader::NextMember()
{
    return d->cursor.Next();
}

bool JsonReader::NextElement()
{
    return d->cursor.Next();
}

const QByteArray& JsonReader::GetKey() const
{
    return d->cursor.GetKey();
}

bool JsonReader::IsKey(const char* name) const
{
    const QByteArray& key = d->cursor.GetKey();
    const auto length = std::strlen(name);
    return static_cast<size_t>(key.size()) == length && std::memcmp(key.constData(), name, length) == 0;
}

bool JsonReader::ReadBool(bool& value)
{
    return d->Expect(Type::Bool) && d->cursor.TakeBool(value);
}

bool JsonReader::ReadString(QString& value)
{
    JsonString string;
    if (!d->Expect(Type::String) || !d->cursor.TakeString(string))
        return false;
    value = string.ToString();
    return true;
}

bool JsonReader::ReadUtf8(QByteArray& value)
{
    JsonString string;
    if (!d->Expect(Type::String) || !d->cursor.TakeString(string))
        return false;
    string.GetUtf8(value);
    return true;
}

bool JsonReader::ReadInt(int& value)
{
    qint64 wide = 0;
    if (!ReadInt64(wide) || wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max())
        return false;
    value = static_cast<int>(wide);
    return true;
}

bool JsonReader::ReadInt64(qint64& value)
{
    if (GetType() == Type::String) {
        QByteArray digits;
        bool ok = false;
        const qint64 number = ReadUtf8(digits) ? digits.toLongLong(&ok) : 0;
        if (ok)
            value = number;
        return ok;
    }
    JsonNumber number;
    if (!d->Expect(Type::Number) || !d->cursor.TakeNumber(number))
        return false;
    // 3.0 is a whole number as well; 3.5 is not.
    const auto whole = static_cast<qint64>(number.value);
    if (static_cast<double>(whole) < number.value || static_cast<double>(whole) > number.value)
        return false;
    value = whole;
    return true;
}

bool JsonReader::ReadDouble(double& value)
{
    if (GetType() == Type::String) {
        QByteArray text;
        bool ok = false;
        const double number = ReadUtf8(text) ? text.toDouble(&ok) : 0;
        if (ok)
            value = number;
        return ok;
    }
    JsonNumber number;
    if (!d->Expect(Type::Number) || !d->cursor.TakeNumber(number))
        return false;
    value = number.value;
    return true;
}

bool JsonReader::ReadVariant(QVariant& value)
{
    // Recursion is bounded by the depth that the cursor allows.
    switch (GetType()) {
    case Type::Bool: {
        bool flag = false;
        d->cursor.TakeBool(flag);
        value = flag;
        break;
    }
    case Type::Number: {
        JsonNumber number;
        d->cursor.TakeNumber(number);
        value = number.isWhole ? QVariant(static_cast<qlonglong>(number.whole)) : QVariant(number.value);
        break;
    }
    case Type::String: {
        QString text;
        ReadString(text);
        value = text;
        break;
    }
    case Type::Array: {
        QVariantList list;
        EnterArray();
        while (NextElement()) {
            list.append(QVariant());
            ReadVariant(list.last());
        }
        value = list;
        break;
    }
    case Type::Object: {
        QVariantMap map;
        EnterObject();
        while (NextMember()) {
            const QByteArray& key = GetKey();
            const QString name = Utf8::ToString(key.constData(), key.size());
            ReadVariant(map[name]);
        }
        value = map;
        break;
    }
    case Type::Null:
    case Type::None:
        Skip();
        value = QVariant();
        break;
    }
    return !HasError();
}

void JsonReader::Skip()
{
    d->cursor.Skip();
}

void JsonReader::KeepMember(QByteArray& members)
{
    const char* begin = d->cursor.GetMemberPosition();
    d->cursor.Skip();
    if (HasError())
        return;
    if (!members.isEmpty())
        members.append(',');
    members.append(begin, static_cast<int>(d->cursor.GetPosition() - begin));
}

bool JsonReader::Finish()
{
    return d->cursor.Finish();
}

bool JsonReader::HasError() const
{
    return d->cursor.HasError();
}

QString JsonReader::GetReason() const
{
    return d->cursor.GetReason();
}

void JsonReader::Fail(const QString& reason)
{
    d->cursor.Fail(reason);
}
