// SPDX-License-Identifier: Apache-2.0

#include "CodeHighlighter_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QRegularExpression>
#include <QSet>
#include <QSyntaxHighlighter>

namespace
{
const QSet<QString>& Keywords()
{
    static const QSet<QString> words = [] {
        QSet<QString> set;
        for (const char* word :
             {"False", "None",     "True",  "and",    "as",   "assert", "async",  "await",    "break",
              "class", "continue", "def",   "del",    "elif", "else",   "except", "finally",  "for",
              "from",  "global",   "if",    "import", "in",   "is",     "lambda", "nonlocal", "not",
              "or",    "pass",     "raise", "return", "try",  "while",  "with",   "yield"})
            set.insert(QLatin1String(word));
        return set;
    }();
    return words;
}

// Python, line by line. The state of a line is the triple quote that is still open behind it.
class PythonHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString& text) override
    {
        int at = 0;
        if (previousBlockState() > 0)
            at = EndString(text, 0, 0, previousBlockState());
        else
            setCurrentBlockState(0);
        while (at >= 0 && at < text.size())
            at = Token(text, at);
    }

private:
    enum OpenQuote
    {
        None = 0,
        Double = 1,
        Single = 2,
    };

    static QString Mark(int quote)
    {
        return quote == Double ? QStringLiteral("\"\"\"") : QStringLiteral("'''");
    }

    void Paint(int start, int length, WbColor colour)
    {
        QTextCharFormat format;
        format.setForeground(WbTheme::Instance()->Color(colour));
        format.setFontItalic(colour == WbColor::CodeComment);
        setFormat(start, length, format);
    }

    // Paints from start on to the end of the triple-quoted string, looking for it behind from; -1: it goes
    // on.
    int EndString(const QString& text, int start, int from, int quote)
    {
        const int end = text.indexOf(Mark(quote), from);
        setCurrentBlockState(end < 0 ? quote : int(None));
        Paint(start, (end < 0 ? text.size() : end + 3) - start, WbColor::CodeString);
        return end < 0 ? -1 : end + 3;
    }

    int Token(const QString& text, int at)
    {
        static const QRegularExpression word(QStringLiteral("[\\p{L}_][\\p{L}\\p{N}_]*"));
        static const QRegularExpression number(
            QStringLiteral("(0[xX][0-9a-fA-F_]+|0[bB][01_]+|\\d[\\d_]*\\.?\\d*([eE][+-]?\\d+)?)"));
        const QChar c = text.at(at);
        if (c == QLatin1Char('#')) {
            Paint(at, text.size() - at, WbColor::CodeComment);
            return text.size();
        }
        if (c == QLatin1Char('"') || c == QLatin1Char('\''))
            return String(text, at);
        if (c == QLatin1Char('@') && text.left(at).trimmed().isEmpty()) {
            Paint(at, text.size() - at, WbColor::CodeFunction);
            return text.size();
        }
        if (c.isDigit())
            return Matched(number, text, at, [this](const QRegularExpressionMatch& match) {
                Paint(match.capturedStart(), match.capturedLength(), WbColor::CodeNumber);
            });
        if (c.isLetter() || c == QLatin1Char('_'))
            return Matched(word, text, at,
                           [this, &text](const QRegularExpressionMatch& match) { Word(text, match); });
        return at + 1;
    }

    template <typename Act>
    int Matched(const QRegularExpression& pattern, const QString& text, int at, Act act)
    {
        const QRegularExpressionMatch match =
            pattern.match(text, at, QRegularExpression::NormalMatch, QRegularExpression::AnchoredMatchOption);
        if (!match.hasMatch() || match.capturedLength() == 0)
            return at + 1;
        act(match);
        return match.capturedEnd();
    }

    void Word(const QString& text, const QRegularExpressionMatch& match)
    {
        if (Keywords().contains(match.captured()))
            Paint(match.capturedStart(), match.capturedLength(), WbColor::CodeKeyword);
        else if (text.midRef(match.capturedEnd()).trimmed().startsWith(QLatin1Char('(')))
            Paint(match.capturedStart(), match.capturedLength(), WbColor::CodeFunction);
    }

    int String(const QString& text, int at)
    {
        const int quote = text.at(at) == QLatin1Char('"') ? Double : Single;
        if (text.midRef(at, 3) == Mark(quote))
            return EndString(text, at, at + 3, quote);
        int end = at + 1;
        while (end < text.size() && text.at(end) != text.at(at))
            end += text.at(end) == QLatin1Char('\\') ? 2 : 1;
        end = qMin(end + 1, text.size());
        Paint(at, end - at, WbColor::CodeString);
        return end;
    }
};
} // namespace

std::unique_ptr<QSyntaxHighlighter> MakePythonHighlighter(QTextDocument& document)
{
    return std::make_unique<PythonHighlighter>(&document);
}

QString HighlighterName()
{
    return {};
}

#include "CodeHighlighterOwn.moc"
