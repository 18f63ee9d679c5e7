// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QString>
#include <QVector>

#include <optional>

// A piece of a value as an author without Python sees it.
struct RPAPROCESSDATA_EXPORT RpaValuePart
{
    // What a piece is; a part of another kind never shares a value with a Number.
    enum class Kind
    {
        Text,   // what it says
        Number, // as Python writes it; always the only part
        Code,   // a variable, or any other Python; shown as one piece
    };

    Kind kind = Kind::Text;
    QString text;

    // Of kind and text.
    bool operator==(const RpaValuePart& other) const { return kind == other.kind && text == other.text; }
};

// One Python value in pieces: a text, a number, a variable, or texts and variables joined to a text. No
// parts: nothing was filled in. Thread-safe.
//
//     RpaValue::Read("f\"订单{编号}\"").parts   // Text "订单", Code "编号"
struct RPAPROCESSDATA_EXPORT RpaValue
{
    QVector<RpaValuePart> parts;
    bool isText = false; // a single Code is turned into a text

    // A value of one part.
    static RpaValue Text(const QString& text) { return {{{RpaValuePart::Kind::Text, text}}, false}; }
    static RpaValue Number(const QString& number) { return {{{RpaValuePart::Kind::Number, number}}, false}; }
    static RpaValue Code(const QString& python) { return {{{RpaValuePart::Kind::Code, python}}, false}; }

    // Python that has no pieces of its own (a sum, an unusual way to write a text) becomes one Code.
    static RpaValue Read(const QString& python);
    // As Read(), but nothing for Python that calculates: in a text field that is better seen as a whole.
    static std::optional<RpaValue> ReadText(const QString& python);

    // Python that gives this value; empty when there are no parts.
    QString ToPython() const;

    // Nothing was filled in; and whether it is one part of that kind and nothing else.
    bool IsEmpty() const { return parts.isEmpty(); }
    bool Is(RpaValuePart::Kind kind) const { return parts.size() == 1 && parts.first().kind == kind; }
    // All parts are texts.
    bool IsPlain() const;
    QString PlainText() const;

    // Whether a text reads as a number: no leading zeros, no exponent.
    static bool IsNumber(const QString& text);

    // Of the parts and of how a single Code is meant.
    bool operator==(const RpaValue& other) const { return parts == other.parts && isText == other.isText; }
    bool operator!=(const RpaValue& other) const { return !(*this == other); }
};
