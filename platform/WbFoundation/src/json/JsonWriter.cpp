// SPDX-License-Identifier: Apache-2.0

#include "JsonNumber_p.h"

#include <WbFoundation/JsonWriter.h>

#include <QVariantMap>

#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace
{
constexpr int firstCapacity = 1024;
constexpr int longestNumber = 40;

bool IsWrittenPlain(ushort c)
{
    return c >= 0x20 && c < 0x80 && c != '"' && c != '\\';
}

// Two characters for the short escapes, else null.
const char* WrittenEscape(uchar c)
{
    switch (c) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\b':
        return "\\b";
    case '\f':
        return "\\f";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return nullptr;
    }
}
} // namespace

class JsonWriter::Private
{
public:
    // Room for that many more bytes.
    char* Reserve(int length)
    {
        if (used + length > buffer.size())
            buffer.resize(qMax(firstCapacity, qMax(used + length, buffer.size() * 2)));
        return buffer.data() + used;
    }

    void Append(const char* text, int length)
    {
        std::memcpy(Reserve(length), text, static_cast<size_t>(length));
        used += length;
    }

    void Append(char c)
    {
        *Reserve(1) = c;
        ++used;
    }

    void BeginValue()
    {
        if (needsComma)
            Append(',');
        needsComma = true;
    }

    void Open(char bracket)
    {
        BeginValue();
        Append(bracket);
        needsComma = false;
    }

    void Close(char bracket)
    {
        Append(bracket);
        needsComma = true;
    }

    void AppendEscaped(const char* utf8, int length);
    void AppendString(const QString& text);
    template <class Number>
    void AppendNumber(Number number);

    QByteArray buffer; // used bytes at its start, then room
    int used = 0;
    bool needsComma = false;
};

void JsonWriter::Private::AppendEscaped(const char* utf8, int length)
{
    const char* const end = utf8 + length;
    for (const char* at = utf8; at < end;) {
        const char* plain = at;
        while (at < end && (IsWrittenPlain(static_cast<uchar>(*at)) || static_cast<uchar>(*at) >= 0x80))
            ++at;
        Append(plain, static_cast<int>(at - plain));
        if (at == end)
            break;
        const auto c = static_cast<uchar>(*at++);
        if (const char* escape = WrittenEscape(c)) {
            Append(escape, 2);
        } else {
            static const char digits[] = "0123456789abcdef";
            const char unicode[] = {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 0xF]};
            Append(unicode, sizeof unicode);
        }
    }
}

void JsonWriter::Private::AppendString(const QString& text)
{
    Append('"');
    // Most texts are plain ASCII: no UTF-8 copy for them.
    const int length = text.size();
    const QChar* const source = text.constData();
    char* target = Reserve(length);
    int plain = 0;
    while (plain < length && IsWrittenPlain(source[plain].unicode())) {
        target[plain] = static_cast<char>(source[plain].unicode());
        ++plain;
    }
    used += plain;
    if (plain < length) {
        const QByteArray rest = QStringView(source + plain, length - plain).toUtf8();
        AppendEscaped(rest.constData(), rest.size());
    }
    Append('"');
}

template <class Number>
void JsonWriter::Private::AppendNumber(Number number)
{
    char* target = Reserve(longestNumber);
    const auto result = std::to_chars(target, target + longestNumber, number);
    used += static_cast<int>(result.ptr - target);
}

JsonWriter::JsonWriter() : d(std::make_unique<Private>()) {}

JsonWriter::~JsonWriter() = default;

void JsonWriter::BeginObject()
{
    d->Open('{');
}

void JsonWriter::EndObject()
{
    d->Close('}');
}

void JsonWriter::BeginArray()
{
    d->Open('[');
}

void JsonWriter::EndArray()
{
    d->Close(']');
}

void JsonWriter::Key(const char* name)
{
    d->BeginValue();
    d->Append('"');
    d->Append(name, static_cast<int>(std::strlen(name)));
    d->Append("\":", 2);
    d->needsComma = false;
}

void JsonWriter::Key(const QString& name)
{
    d->BeginValue();
    d->AppendString(name);
    d->Append(':');
    d->needsComma = false;
}

void JsonWriter::Null()
{
    d->BeginValue();
    d->Append("null", 4);
}

void JsonWriter::Bool(bool value)
{
    d->BeginValue();
    value ? d->Append("true", 4) : d->Append("false", 5);
}

void JsonWriter::Int(int value)
{
    d->BeginValue();
    d->AppendNumber(value);
}

void JsonWriter::Int64(qint64 value)
{
    if (value > largestJsonInteger || value < -largestJsonInteger) {
        Utf8(QByteArray::number(value));
        return;
    }
    d->BeginValue();
    d->AppendNumber(value);
}

void JsonWriter::UInt64(quint64 value)
{
    if (value > static_cast<quint64>(largestJsonInteger)) {
        Utf8(QByteArray::number(value));
        return;
    }
    d->BeginValue();
    d->AppendNumber(value);
}

void JsonWriter::Double(double value)
{
    if (!std::isfinite(value) || std::abs(value) > static_cast<double>(largestJsonInteger)) {
        Utf8(QByteArray::number(value, 'g', 17));
        return;
    }
    d->BeginValue();
    d->AppendNumber(value);
}

void JsonWriter::String(const QString& value)
{
    d->BeginValue();
    d->AppendString(value);
}

void JsonWriter::Utf8(const QByteArray& value)
{
    d->BeginValue();
    d->Append('"');
    d->AppendEscaped(value.constData(), value.size());
    d->Append('"');
}

void JsonWriter::StringList(const QStringList& values)
{
    BeginArray();
    for (const QString& value : values)
        String(value);
    EndArray();
}

void JsonWriter::Variant(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Bool:
        Bool(value.toBool());
        return;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Long:
    case QMetaType::Short:
        Int64(value.toLongLong());
        return;
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
    case QMetaType::UShort:
        UInt64(value.toULongLong());
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        Double(value.toDouble());
        return;
    case QMetaType::QStringList:
        StringList(value.toStringList());
        return;
    case QMetaType::QVariantList: {
        BeginArray();
        const QVariantList list = value.toList();
        for (const QVariant& element : list)
            Variant(element);
        EndArray();
        return;
    }
    case QMetaType::QVariantMap: {
        BeginObject();
        const QVariantMap map = value.toMap();
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
            Key(entry.key());
            Variant(entry.value());
        }
        EndObject();
        return;
    }
    default:
        value.canConvert<QString>() ? String(value.toString()) : Null();
    }
}

void JsonWriter::Raw(const QByteArray& json)
{
    d->BeginValue();
    d->Append(json.constData(), json.size());
}

void JsonWriter::RawMembers(const QByteArray& members)
{
    if (!members.isEmpty())
        Raw(members);
}

void JsonWriter::Member(const char* name, const QString& value)
{
    Key(name);
    String(value);
}

void JsonWriter::Member(const char* name, bool value)
{
    Key(name);
    Bool(value);
}

void JsonWriter::Member(const char* name, int value)
{
    Key(name);
    Int(value);
}

QByteArray JsonWriter::Take()
{
    d->buffer.resize(d->used);
    d->used = 0;
    d->needsComma = false;
    return std::exchange(d->buffer, QByteArray());
}
