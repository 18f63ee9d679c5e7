// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// The words and signs of a Python expression, enough to find names and unclosed brackets; no parser.
struct PythonToken
{
    enum class Kind
    {
        Name,
        Number,
        Text,   // content without quotes, escapes as they stand
        Fields, // content of an f-string
        Sign,   // operator, bracket, comma, …
        Bad,    // an open text, a comment, a character that no expression has
    };

    Kind kind;
    QString text;
    int begin = 0; // of the text in the whole
    int from = 0;  // of the token, quotes and prefix included
    int to = 0;

    bool IsSign(const char* sign) const { return kind == Kind::Sign && text == QLatin1String(sign); }
    bool IsName(const char* name) const { return kind == Kind::Name && text == QLatin1String(name); }
};

class PythonTokens
{
public:
    static QVector<PythonToken> Read(const QString& python);

    static bool IsNameStart(QChar c);
    static bool IsNamePart(QChar c) { return IsNameStart(c) || c.isDigit() || c.isMark(); }

private:
    explicit PythonTokens(const QString& python) : source(python) {}
    void ReadNext();
    void ReadName();
    void ReadNumber();
    void ReadText(bool hasFields);
    void ReadSign();
    QChar Peek(int ahead = 0) const { return at + ahead < source.size() ? source.at(at + ahead) : QChar(); }

    const QString source;
    int at = 0;
    QVector<PythonToken> tokens;
};
