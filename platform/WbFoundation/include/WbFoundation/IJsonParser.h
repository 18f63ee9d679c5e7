#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QObject>

// Base of every record that is kept as JSON: its declared properties (Q_PROPERTY of the derived classes, in
// declaration order) are the members of the JSON object.
class WBFOUNDATION_EXPORT IJsonParser : public QObject
{
    Q_OBJECT

public:
    explicit IJsonParser(QObject* parent = nullptr);
    ~IJsonParser() override;

    // Copies the values of all declared properties (not the QObject identity).
    IJsonParser& operator=(const IJsonParser& other);

    // Compact UTF-8 JSON of the declared properties.
    virtual QByteArray ToJson() const;

    // Reads the members that the object knows and leaves the others' values as they are. False, with the object
    // unchanged, when the text is not a JSON object or breaks the limits for foreign JSON (JsonGuard).
    virtual bool Parse(const QByteArray& json);
};
