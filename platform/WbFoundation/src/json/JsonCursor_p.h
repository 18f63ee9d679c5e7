// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "JsonKeySet_p.h"
#include "JsonString_p.h"

#include <WbFoundation/JsonReader.h>

#include <vector>

struct JsonNumber;

// The place in a JSON text up to which everything has been checked, and the objects and arrays around it.
class JsonCursor
{
public:
    using Type = JsonReader::Type;

    JsonCursor(const QByteArray& json, const JsonLimits& limits);

    Type GetType() const { return type; }
    const char* GetPosition() const { return at; }
    // The opening quote of the current member's name.
    const char* GetMemberPosition() const { return member; }
    const QByteArray& GetKey() const { return key; }

    // Into the object or array that comes next.
    bool Enter();
    // To the next value of the innermost object or array, past what was not taken; false behind its end.
    bool Next();

    // Past a value of the fitting type.
    bool TakeBool(bool& value);
    bool TakeNumber(JsonNumber& number);
    bool TakeString(JsonString& string);
    // Past any value.
    void Skip();

    bool Finish();
    void Fail(const QString& why);
    bool HasError() const { return failed; }
    QString GetReason() const { return reason; }

private:
    struct Level
    {
        bool isObject;
        bool isFirst;
    };

    void SkipBlanks();
    bool StandBeforeValue();
    void SkipSimple();
    bool TakeLiteral(const char* literal, int length);
    bool TakeKey();
    bool IsWithinCounts(bool isObject);
    bool Scan(JsonString& string, int maxBytes);
    void Leave();

    const JsonLimits limits;
    const char* at;
    const char* const begin;
    const char* const end;
    const char* member = nullptr;
    Type type = Type::None;
    QByteArray key;
    JsonKeySet keys;
    std::vector<Level> levels;
    int memberCount = 0;
    int elementCount = 0;
    bool failed = false;
    QString reason;
};
