// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <QRegularExpression>
#include <QUrl>

namespace
{
struct Link
{
    QString target;
    QString text;
};

QString PlainText(QString html)
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    html.remove(tag);
    html.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&gt;"), QLatin1String(">"));
    html.replace(QLatin1String("&quot;"), QLatin1String("\""))
        .replace(QLatin1String("&amp;"), QLatin1String("&"));
    return html.trimmed();
}

QVector<Link> LinksOf(const QString& html)
{
    static const QRegularExpression anchor(
        QStringLiteral("<a\\s[^>]*?href\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')[^>]*>(.*?)</a>"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    QVector<Link> links;
    QRegularExpressionMatchIterator matches = anchor.globalMatch(html);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        links.append({PlainText(match.captured(1) + match.captured(2)), PlainText(match.captured(3))});
    }
    return links;
}

// Nothing is fetched: only what no reader could ever open is dead.
bool IsDead(const QString& target)
{
    const QUrl url(target); // as browsers take it, with spaces and Chinese letters
    if (target.isEmpty() || target == QLatin1String("#") || !url.isValid())
        return true;
    if (target.startsWith(QLatin1Char('#')))
        return false;
    const QString scheme = url.scheme();
    const bool isWeb = scheme == QLatin1String("http") || scheme == QLatin1String("https");
    return scheme.isEmpty() || (isWeb && url.host().isEmpty());
}
} // namespace

void Checkers::FindDeadLinks(const CheckedApp& app, ProblemList& found)
{
    const QVector<Link> links = LinksOf(app.Get().manual);
    for (const Link& link : links) {
        if (!IsDead(link.target))
            continue;
        RpaProblem problem;
        problem.rule = QStringLiteral("dead-link");
        problem.severity = RpaProblemSeverity::Warning;
        problem.place.area = RpaProblemArea::Manual;
        problem.place.item = link.text;
        problem.subject = link.target;
        problem.message = link.target.isEmpty()
                              ? QStringLiteral("使用说明中的链接“%1”没有地址").arg(link.text)
                              : QStringLiteral("使用说明中的链接“%1”打不开：%2").arg(link.text, link.target);
        problem.remedy = QStringLiteral("请填写完整的地址，例如 https://example.com，或去掉此链接");
        found.Add(problem);
    }
}
