// SPDX-License-Identifier: Apache-2.0

#include "CapturedElement_p.h"

#include <RpaProcessData/RpaNodeManager.h>

namespace
{
constexpr int longestName = 40;
constexpr int longestSelector = 8192;
constexpr int mostAttributes = 32;
constexpr int longestAttribute = 1000;

QString Text(const QVariantMap& description, const char* key, int longest)
{
    return description.value(QLatin1String(key)).toString().left(longest);
}

// A page is found again by where it is, not by what was asked of it that day.
QString PageWithoutQuery(const QUrl& page)
{
    return page.toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
}
} // namespace

QString CapturedElement::Refusal(const QVariantMap& description)
{
    if (description.value(QStringLiteral("frame")).toBool())
        return QStringLiteral("这里是网页中嵌入的另一个网页，不能捕获其中的元素");
    const QString css = description.value(QStringLiteral("css")).toString();
    const QString xpath = description.value(QStringLiteral("xpath")).toString();
    if ((css.isEmpty() && xpath.isEmpty()) || css.size() > longestSelector || xpath.size() > longestSelector)
        return QStringLiteral("无法为这个元素生成可靠的定位，请选择它附近的元素");
    return QString();
}

RpaNode CapturedElement::ToNode(const QVariantMap& description, const QUrl& page)
{
    RpaNode node;
    node.name = Text(description, "name", longestName).simplified();
    node.pageUrl = PageWithoutQuery(page);
    node.css = Text(description, "css", longestSelector);
    node.xpath = Text(description, "xpath", longestSelector);
    const QVariantMap attributes = description.value(QStringLiteral("attributes")).toMap();
    for (auto it = attributes.begin(); it != attributes.end() && node.attributes.size() < mostAttributes;
         ++it)
        node.attributes.insert(it.key().left(100), it.value().toString().left(longestAttribute));
    return node;
}

RpaNode CapturedElement::FindSame(const RpaNodeManager& nodes, const RpaNode& node)
{
    const QVector<RpaNode> all = nodes.GetNodes();
    for (const RpaNode& known : all)
        if (known.pageUrl == node.pageUrl && known.css == node.css && known.xpath == node.xpath)
            return known;
    return RpaNode();
}
