// SPDX-License-Identifier: Apache-2.0

#include "JsonText.h"

namespace server
{
namespace
{
void AppendEscaped(QByteArray& out, char c)
{
    static const char digits[] = "0123456789abcdef";
    switch (c) {
    case '"':
        out += "\\\"";
        break;
    case '\\':
        out += "\\\\";
        break;
    case '\n':
        out += "\\n";
        break;
    case '\r':
        out += "\\r";
        break;
    case '\t':
        out += "\\t";
        break;
    default:
        out += "\\u00";
        out += digits[(c >> 4) & 0xf];
        out += digits[c & 0xf];
    }
}

bool MustBeEscaped(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}
} // namespace

void JsonText::Separate()
{
    if (text.isEmpty())
        return;
    const char last = text.back();
    if (last != '{' && last != '[' && last != ':')
        text += ',';
}

JsonText& JsonText::BeginObject()
{
    Separate();
    text += '{';
    return *this;
}

JsonText& JsonText::EndObject()
{
    text += '}';
    return *this;
}

JsonText& JsonText::BeginArray()
{
    Separate();
    text += '[';
    return *this;
}

JsonText& JsonText::EndArray()
{
    text += ']';
    return *this;
}

JsonText& JsonText::Key(const char* name)
{
    Separate();
    text += '"';
    text += name;
    text += "\":";
    return *this;
}

JsonText& JsonText::Value(const QString& value)
{
    Separate();
    text += '"';
    const QByteArray utf8 = value.toUtf8();
    for (const char c : utf8)
        if (MustBeEscaped(c))
            AppendEscaped(text, c);
        else
            text += c;
    text += '"';
    return *this;
}

JsonText& JsonText::Value(qint64 number)
{
    Separate();
    text += QByteArray::number(number);
    return *this;
}

JsonText& JsonText::Value(bool truth)
{
    Separate();
    text += truth ? "true" : "false";
    return *this;
}
} // namespace server
