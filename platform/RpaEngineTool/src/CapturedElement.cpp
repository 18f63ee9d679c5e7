// SPDX-License-Identifier: Apache-2.0

#include "CapturedElement_p.h"

#include <RpaProcessData/RpaNodeManager.h>

namespace
{
constexpr int LongestName = 40;
constexpr int LongestSelector = 8192;
constexpr int MostAttributes = 32;
constexpr int LongestAttribute = 1000;

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
    if ((css.isEmpty() && xpath.isEmpty()) || css.size() > LongestSelector || xpath.size() > LongestSelector)
        return QStringLiteral("无法为这个元素生成可靠的定位，请选择它附近的元素");
    return QString();
}

RpaNode CapturedElement::ToNode(const QVariantMap& description, const QUrl& page)
{
    RpaNode node;
    node.name = Text(description, "name", LongestName).simplified();
    node.pageUrl = PageWithoutQuery(page);
    node.css = Text(description, "css", LongestSelector);
    node.xpath = Text(description, "xpath", LongestSelector);
    const QVariantMap attributes = description.value(QStringLiteral("attributes")).toMap();
    for (auto it = attributes.begin(); it != attributes.end() && node.attributes.size() < MostAttributes;
         ++it)
        node.attributes.insert(it.key().left(100), it.value().toString().left(LongestAttribute));
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
