#include "RichHtmlScreen_p.h"
#include "RichImages_p.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

namespace
{
constexpr int maximumTableDepth = 4;
constexpr int maximumTextSize = 32 * 1024 * 1024;

class Screen
{
public:
    Screen(const QString& html, RichImages& pictures) : source(html), images(pictures) {}

    QString Run()
    {
        out.reserve(source.size());
        while (at < source.size()) {
            const int open = source.indexOf(QLatin1Char('<'), at);
            if (open < 0)
                break;
            out += source.midRef(at, open - at);
            at = open;
            TakeTag();
        }
        out += source.midRef(at);
        return out;
    }

private:
    void TakeTag()
    {
        if (source.midRef(at, 4) == QLatin1String("<!--")) {
            SkipBehind(QStringLiteral("-->"));
            return;
        }
        const int end = EndOfTag();
        const QString name = NameAt(at + 1);
        const int begin = at;
        at = end;
        if (IsDroppedWithContent(name))
            SkipBehind(QLatin1String("</") + name + QLatin1Char('>'));
        else if (name != QLatin1String("link") && name != QLatin1String("meta") &&
                 name != QLatin1String("base"))
            CopyTag(name, source.mid(begin, end - begin));
    }

    void CopyTag(const QString& name, const QString& tag)
    {
        if (name == QLatin1String("table") && ++tableDepth > maximumTableDepth)
            return;
        if (name == QLatin1String("/table") && --tableDepth >= maximumTableDepth)
            return;
        tableDepth = qMax(tableDepth, 0);
        if (tableDepth > maximumTableDepth && IsTablePart(name))
            return;
        if (name == QLatin1String("img"))
            CopyPicture(tag);
        else if (name == QLatin1String("td") || name == QLatin1String("th"))
            out += WithBoundedSpans(tag);
        else
            out += tag;
    }

    void CopyPicture(QString tag)
    {
        static const QRegularExpression src(
            QStringLiteral("\\bsrc\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s>]+))"),
            QRegularExpression::CaseInsensitiveOption);
        const QRegularExpressionMatch match = src.match(tag);
        const QString address = match.captured(match.lastCapturedIndex()).trimmed();
        QString name = address;
        if (address.startsWith(QLatin1String("data:"), Qt::CaseInsensitive))
            name = images.AddDataUri(address);
        // A picture from elsewhere would be fetched behind the author's back.
        if (!images.Contains(name))
            return;
        tag.replace(match.capturedStart(), match.capturedLength(),
                    QLatin1String("src=\"") + name + QLatin1Char('"'));
        out += tag;
    }

    static QString WithBoundedSpans(QString tag)
    {
        static const QRegularExpression wideSpan(
            QStringLiteral("\\b(col|row)span\\s*=\\s*[\"']?\\s*[+-]?\\d{3,}\\s*[\"']?"),
            QRegularExpression::CaseInsensitiveOption);
        return tag.replace(wideSpan, QStringLiteral(" "));
    }

    static bool IsDroppedWithContent(const QString& name)
    {
        static const QStringList dropped{QStringLiteral("script"),   QStringLiteral("style"),
                                         QStringLiteral("title"),    QStringLiteral("iframe"),
                                         QStringLiteral("object"),   QStringLiteral("svg"),
                                         QStringLiteral("noscript"), QStringLiteral("template")};
        return dropped.contains(name);
    }

    static bool IsTablePart(const QString& name)
    {
        static const QStringList parts{QStringLiteral("tr"),    QStringLiteral("td"),
                                       QStringLiteral("th"),    QStringLiteral("thead"),
                                       QStringLiteral("tbody"), QStringLiteral("tfoot")};
        return parts.contains(name.startsWith(QLatin1Char('/')) ? name.mid(1) : name);
    }

    QString NameAt(int position) const
    {
        int end = position;
        if (end < source.size() && source.at(end) == QLatin1Char('/'))
            ++end;
        while (end < source.size() && source.at(end).isLetterOrNumber())
            ++end;
        return source.mid(position, end - position).toLower();
    }

    int EndOfTag() const
    {
        QChar quote;
        for (int i = at + 1; i < source.size(); ++i) {
            const QChar c = source.at(i);
            if (!quote.isNull())
                quote = c == quote ? QChar() : quote;
            else if (c == QLatin1Char('"') || c == QLatin1Char('\''))
                quote = c;
            else if (c == QLatin1Char('>'))
                return i + 1;
        }
        return source.size();
    }

    void SkipBehind(const QString& mark)
    {
        const int end = source.indexOf(mark, at, Qt::CaseInsensitive);
        at = end < 0 ? source.size() : end + mark.size();
    }

    const QString& source;
    RichImages& images;
    QString out;
    int at = 0;
    int tableDepth = 0;
};
} // namespace

QString ScreenHtml(const QString& html, RichImages& images)
{
    if (html.size() <= maximumTextSize)
        return Screen(html, images).Run();
    return Screen(html.left(maximumTextSize), images).Run();
}

QString HtmlOfPlainText(const QString& text)
{
    QString html;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        QString escaped = line.toHtmlEscaped();
        escaped.remove(QLatin1Char('\r'));
        escaped.replace(QLatin1String("  "), QLatin1String(" &nbsp;"));
        html += escaped.isEmpty() ? QStringLiteral("<p style=\"-qt-paragraph-type:empty\"><br></p>")
                                  : QLatin1String("<p>") + escaped + QLatin1String("</p>");
    }
    return html;
}

bool IsAllowedLink(const QString& address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || address.size() > 2048)
        return false;
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("mailto"))
        return !url.path().isEmpty();
    return (scheme == QLatin1String("http") || scheme == QLatin1String("https")) && !url.host().isEmpty();
}
