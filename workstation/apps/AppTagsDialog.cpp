// SPDX-License-Identifier: Apache-2.0

#include "AppTagsDialog.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
constexpr int leastHeightWithTags = 250;
constexpr int mostTags = 10;
constexpr int longestTag = 20;
constexpr int mostShown = 30;

QString KnownText(const QStringList& known)
{
    return known.isEmpty() ? QString()
                           : QStringLiteral("已有的标签：") +
                                 QStringList(known.mid(0, mostShown)).join(QStringLiteral("、"));
}
} // namespace

AppTagsDialog::AppTagsDialog(const AppRecord& app, const QStringList& known, QWidget* parent)
    : FieldDialog(QStringLiteral("标签"), leastHeightWithTags, parent)
{
    setObjectName(QStringLiteral("AppTagsDialog"));
    SetField("editTags", QStringLiteral("标签之间用空格或逗号分开"), QStringLiteral("标签"),
             QStringLiteral("例如：财务，月结"));
    SetHint("labelKnown", KnownText(known));
    AllowEmpty();
    ui.edit->setText(app.tags.join(QStringLiteral("，")));
}

QStringList AppTagsDialog::Read(const QString& line)
{
    static const QRegularExpression between(QStringLiteral("[\\s,，、;；]+"));
    QStringList tags;
    for (QString tag : line.split(between, Qt::SkipEmptyParts)) {
        while (tag.startsWith(QLatin1Char('#')))
            tag.remove(0, 1); // as it is looked for
        if (!tag.isEmpty() && !tags.contains(tag, Qt::CaseInsensitive))
            tags << tag;
    }
    return tags;
}

QString AppTagsDialog::ProblemOf(const QStringList& tags)
{
    if (tags.size() > mostTags)
        return QStringLiteral("一个应用最多 %1 个标签，现在有 %2 个").arg(mostTags).arg(tags.size());
    const auto isLong = [](const QString& tag) { return tag.size() > longestTag; };
    const auto found = std::find_if(tags.begin(), tags.end(), isLong);
    return found == tags.end() ? QString()
                               : QStringLiteral("标签“%1”超过了 %2 个字符").arg(*found).arg(longestTag);
}
