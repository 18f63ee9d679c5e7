// SPDX-License-Identifier: Apache-2.0

#include "ProgramImports_p.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
// The text without what stands in strings and comments; its lines stay where they are.
class CodeOnly
{
public:
    explicit CodeOnly(const QString& program) : text(program) {}

    QString Get()
    {
        while (at < text.size()) {
            const QChar letter = text.at(at);
            if (letter == QLatin1Char('#'))
                SkipComment();
            else if (letter == QLatin1Char('"') || letter == QLatin1Char('\''))
                SkipString(letter);
            else
                code += text.at(at++);
        }
        return code;
    }

private:
    void SkipComment()
    {
        while (at < text.size() && text.at(at) != QLatin1Char('\n'))
            ++at;
    }

    void SkipString(QChar quote)
    {
        const QString three(3, quote);
        const bool isLong = text.midRef(at, 3) == three;
        const QString end = isLong ? three : QString(quote);
        at += end.size();
        while (at < text.size() && text.midRef(at, end.size()) != end) {
            const bool isEscaped = text.at(at) == QLatin1Char('\\') && ++at < text.size();
            if (at < text.size() && text.at(at) == QLatin1Char('\n')) {
                if (!isLong && !isEscaped)
                    return; // never closed
                code += QLatin1Char('\n');
            }
            ++at;
        }
        at += end.size();
        code += QStringLiteral("\"\""); // so that what is around it does not grow together
    }

    const QString& text;
    QString code;
    int at = 0;
};

void TakePart(const QString& part, int line, QVector<ProgramImport>& imports)
{
    static const QRegularExpression from(QStringLiteral("^\\s*from\\s+(\\w+)[\\w.]*\\s+import\\b"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression plain(QStringLiteral("^\\s*import\\s+(.+)$"));
    const QRegularExpressionMatch one = from.match(part);
    if (one.hasMatch())
        imports.append({one.captured(1), line});
    const QRegularExpressionMatch several = plain.match(part);
    if (!several.hasMatch())
        return;
    const QStringList names = several.captured(1).split(QLatin1Char(','));
    for (const QString& name : names) {
        const QString module = name.trimmed().section(QRegularExpression(QStringLiteral("[.\\s]")), 0, 0);
        if (!module.isEmpty())
            imports.append({module, line});
    }
}
} // namespace

QVector<ProgramImport> ProgramImports::Read(const QString& program)
{
    QVector<ProgramImport> imports;
    const QStringList lines = CodeOnly(program).Get().split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList parts = lines.at(i).split(QRegularExpression(QStringLiteral("[;:]\\s*")));
        for (const QString& part : parts)
            TakePart(part, i + 1, imports);
    }
    return imports;
}
