// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/JsonGuard.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <memory>

// Reads JSON value by value in one pass, checking it against the limits of JsonGuard on the way. The reader
// stands before a value; each Read… and Skip() goes past it. Objects and arrays are gone through to their
// end:
//
//     if (reader.EnterObject())
//         while (reader.NextMember())
//             if (reader.IsKey("name"))
//                 reader.ReadString(name);     // whatever is not read is skipped
//
// After the first error every operation answers false; results read so far are to be thrown away then.
class WBFOUNDATION_EXPORT JsonReader
{
public:
    // What comes next.
    enum class Type
    {
        None, // at the end, or after an error
        Null,
        Bool,
        Number,
        String,
        Array,
        Object,
    };

    // The bytes are not copied: they must stay alive while the reader is used.
    explicit JsonReader(const QByteArray& json, const JsonLimits& limits = JsonLimits());
    ~JsonReader();
    JsonReader(const JsonReader&) = delete;
    JsonReader& operator=(const JsonReader&) = delete;

    // Type of the value that comes next.
    Type GetType() const;

    // False, going past the value, when it is of another type.
    bool EnterObject();
    bool EnterArray();
    // False, with the reader in error for that reason, when the value is no object.
    bool RequireObject(const QString& refusal);
    // Goes to the next member / element of the innermost object / array entered; false at its end, which is
    // left then.
    bool NextMember();
    bool NextElement();

    // Name of the current member.
    const QByteArray& GetKey() const;
    bool IsKey(const char* name) const;

    // False, going past the value and leaving the result as it is, when the value does not fit.
    bool ReadBool(bool& value);
    bool ReadString(QString& value);
    bool ReadUtf8(QByteArray& value);
    bool ReadInt(int& value);
    bool ReadInt64(qint64& value);  // also from a string of digits
    bool ReadDouble(double& value); // also from a string
    // Objects become QVariantMap, arrays QVariantList, whole numbers qlonglong, others double.
    bool ReadVariant(QVariant& value);
    void Skip();
    // Appends the current member, `"key":value`, to a list of members that JsonWriter::RawMembers writes
    // back: what a newer client wrote survives in this way.
    void KeepMember(QByteArray& members);

    // True when everything was read without error and nothing but blanks follows.
    bool Finish();
    bool HasError() const;
    // Why, in Chinese; empty without an error.
    QString GetReason() const;
    // Reports a value that cannot be accepted; the reader then stands in error.
    void Fail(const QString& reason);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
