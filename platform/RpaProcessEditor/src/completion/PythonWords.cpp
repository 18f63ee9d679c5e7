// SPDX-License-Identifier: Apache-2.0

#include "PythonWords_p.h"

#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace
{
// A text may have any length, and the author is typing.
constexpr int linesAround = 1000;
constexpr int mostLineCharacters = 1000;
constexpr int shortestWord = 2;

bool IsFirstOfName(QChar c)
{
    return c == QLatin1Char('_') || c.isLetter() || c.isSurrogate();
}

void AddWords(const QString& text, QSet<QString>& words)
{
    static const QRegularExpression names(QStringLiteral("[^\\W\\d]\\w*"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    QRegularExpressionMatchIterator each = names.globalMatch(text);
    while (each.hasNext()) {
        const QString word = each.next().captured();
        if (word.size() >= shortestWord)
            words.insert(word);
    }
}
} // namespace

const QStringList& PythonWords::Keywords()
{
    static const QStringList keywords =
        QStringLiteral(
            "False None True and as assert async await break class continue def del elif else except "
            "finally for from global if import in is lambda nonlocal not or pass raise return try while "
            "with yield")
            .split(QLatin1Char(' '));
    return keywords;
}

bool PythonWords::IsNamePart(QChar c)
{
    return IsFirstOfName(c) || c.isLetterOrNumber() || c.isMark();
}

int PythonWords::BeginOf(const QTextDocument& document, int offset)
{
    const QTextBlock block = document.findBlock(offset);
    const QString text = block.text();
    int begin = qBound(0, offset - block.position(), text.size());
    while (begin > 0 && IsNamePart(text.at(begin - 1)))
        --begin;
    return block.position() + begin;
}

int PythonWords::EndOf(const QTextDocument& document, int offset)
{
    const QTextBlock block = document.findBlock(offset);
    const QString text = block.text();
    int end = qBound(0, offset - block.position(), text.size());
    while (end < text.size() && IsNamePart(text.at(end)))
        ++end;
    return block.position() + end;
}

QString PythonWords::ProblemOf(const QString& name)
{
    const bool isName = !name.isEmpty() && IsFirstOfName(name.at(0)) &&
                        std::all_of(name.begin(), name.end(), [](QChar c) { return IsNamePart(c); });
    if (!isName)
        return QStringLiteral("名称由字母、汉字、数字和下划线组成，不能以数字开头");
    return Keywords().contains(name) ? QStringLiteral("“%1”是 Python 的关键字").arg(name) : QString();
}

QStringList PythonWords::Near(const QTextDocument& document, int offset)
{
    QSet<QString> words;
    const QTextBlock here = document.findBlock(offset);
    QTextBlock block = document.findBlockByNumber(qMax(0, here.blockNumber() - linesAround));
    for (int count = 0; block.isValid() && count < 2 * linesAround; ++count, block = block.next()) {
        QString text = block.text();
        if (block == here)
            text.remove(BeginOf(document, offset) - block.position(),
                        EndOf(document, offset) - BeginOf(document, offset));
        AddWords(text.left(mostLineCharacters), words);
    }
    QStringList sorted = words.values() + Keywords();
    sorted.removeDuplicates();
    sorted.sort(Qt::CaseInsensitive);
    return sorted;
}
