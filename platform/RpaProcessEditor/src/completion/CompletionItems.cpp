// SPDX-License-Identifier: Apache-2.0

#include "CompletionItems_p.h"
#include "PythonWords_p.h"

#include <QHash>

#include <algorithm>

namespace
{
constexpr int longestName = 200;
// Of a single letter, names that merely contain it are noise.
constexpr int shortestInside = 2;

// Also "name=" of an argument.
bool IsName(const QString& name)
{
    const QString bare = name.endsWith(QLatin1Char('=')) ? name.chopped(1) : name;
    return !bare.isEmpty() && name.size() <= longestName &&
           std::all_of(bare.begin(), bare.end(), [](QChar c) { return PythonWords::IsNamePart(c); });
}

int RankOf(const QString& name, const QString& typed)
{
    if (name.startsWith(typed))
        return 0;
    if (name.startsWith(typed, Qt::CaseInsensitive))
        return 1;
    return typed.size() >= shortestInside && name.contains(typed, Qt::CaseInsensitive) ? 2 : -1;
}
} // namespace

CompletionItems CompletionLists::Of(const QVariantMap& answer)
{
    CompletionItems items;
    const QVariantList list = answer.value(QStringLiteral("items")).toList();
    items.reserve(list.size());
    for (const QVariant& entry : list) {
        const QVariantList parts = entry.toList();
        const QString name = parts.value(0).toString();
        if (IsName(name))
            items.append({name, parts.value(1).toString()});
    }
    return items;
}

CompletionItems CompletionLists::OfWords(const QStringList& words)
{
    CompletionItems items;
    items.reserve(words.size());
    for (const QString& word : words) {
        const bool isKeyword = PythonWords::Keywords().contains(word);
        items.append({word, isKeyword ? QStringLiteral("keyword") : QStringLiteral("word")});
    }
    return items;
}

CompletionItems CompletionLists::Filter(const CompletionItems& items, const QString& typed)
{
    CompletionItems ranked[3];
    for (const CompletionItem& item : items) {
        const bool isPrivate = item.name.startsWith(QLatin1Char('_'));
        const int rank = isPrivate && !typed.startsWith(QLatin1Char('_')) ? -1 : RankOf(item.name, typed);
        if (rank >= 0)
            ranked[rank].append(item);
    }
    return ranked[0] + ranked[1] + ranked[2];
}

QString CompletionLists::KindText(const QString& kind)
{
    static const QHash<QString, QString> texts{
        {QStringLiteral("module"), QStringLiteral("模块")},
        {QStringLiteral("class"), QStringLiteral("类")},
        {QStringLiteral("function"), QStringLiteral("函数")},
        {QStringLiteral("param"), QStringLiteral("参数")},
        {QStringLiteral("property"), QStringLiteral("属性")},
        {QStringLiteral("keyword"), QStringLiteral("关键字")},
        {QStringLiteral("instance"), QStringLiteral("值")},
        {QStringLiteral("statement"), QStringLiteral("变量")},
        {QStringLiteral("word"), QStringLiteral("文中的词")},
    };
    return texts.value(kind);
}
