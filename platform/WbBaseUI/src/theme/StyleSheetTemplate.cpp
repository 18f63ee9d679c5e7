// SPDX-License-Identifier: Apache-2.0

#include "StyleSheetTemplate_p.h"
#include "ThemeTokens_p.h"

#include <QRegularExpression>
#include <QStringList>

#include <utility>

namespace
{
// Replaces every match by what the function makes of it.
QString ReplaceAll(const QString& text, const QRegularExpression& pattern,
                   const std::function<QString(const QRegularExpressionMatch&)>& replacement)
{
    QString result;
    int end = 0;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += text.mid(end, match.capturedStart() - end);
        result += replacement(match);
        end = match.capturedEnd();
    }
    return result + text.mid(end);
}
} // namespace

StyleSheetTemplate::StyleSheetTemplate(const QString& text, LengthFunction scale, ImageFunction image)
    : scaleLength(std::move(scale)), imageFor(std::move(image))
{
    static const QRegularExpression lengths(QStringLiteral("(-?\\d+)px"));
    scaledText = ReplaceAll(text, lengths, [this](const QRegularExpressionMatch& match) {
        return QString::number(scaleLength(match.captured(1).toInt())) + QLatin1String("px");
    });
}

QString StyleSheetTemplate::Fill(WbTheme::Scheme scheme) const
{
    static const QRegularExpression placeholders(QStringLiteral("\\{([a-z][a-z:0-9 -]*)\\}"));
    return ReplaceAll(scaledText, placeholders, [this, scheme](const QRegularExpressionMatch& match) {
        return Resolve(match.captured(1), scheme);
    });
}

QString StyleSheetTemplate::Resolve(const QString& placeholder, WbTheme::Scheme scheme) const
{
    const QLatin1String image("image:");
    if (placeholder.startsWith(image)) {
        const QStringList parts = placeholder.mid(image.size()).split(QLatin1Char(' '));
        return parts.size() == 3 ? imageFor(parts[0], parts[1], scaleLength(parts[2].toInt())) : QString();
    }
    for (const ColorToken& token : ColorTokens())
        if (placeholder == QLatin1String(token.name))
            return QColor::fromRgb(scheme == WbTheme::Scheme::Light ? token.light : token.dark).name();
    qWarning("Unknown name in the style sheet template: %s", qPrintable(placeholder));
    return {};
}
