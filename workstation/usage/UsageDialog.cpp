// SPDX-License-Identifier: Apache-2.0

#include "UsageDialog.h"

#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QHash>

namespace
{
constexpr int shownDays = 30;
constexpr int leastWidth = 560;
constexpr int mostHeight = 320; // of the days

QString NameOf(const QString& event)
{
    static const QHash<QString, QString> names{
        {QStringLiteral("OXA_AppDevelop_Save"), QStringLiteral("保存")},
        {QStringLiteral("OXA_AppDevelop_Saveas"), QStringLiteral("另存为")},
        {QStringLiteral("OXA_AppDevelop_GrayRelease"), QStringLiteral("灰度")},
        {QStringLiteral("OXA_AppDevelop_Launch"), QStringLiteral("上线")},
        {QStringLiteral("OXA_AppDevelop_VersionDelete"), QStringLiteral("删除版本")},
        {QStringLiteral("OXA_MyApplications_Execute"), QStringLiteral("运行")},
    };
    return names.value(event, event);
}
} // namespace

UsageDialog::UsageDialog(DateLanguage language, QWidget* parent)
    : RowsDialog(QStringLiteral("使用统计"),
                 QStringLiteral("本单位所有账号最近 %1 天的操作次数（按世界协调时间分日）。").arg(shownDays),
                 parent),
      dateLanguage(language)
{
    setObjectName(QStringLiteral("UsageDialog"));
    GetContentWidget()->setMinimumWidth(leastWidth);
    WbScaledForm::Follow(GetContentWidget());
    Say(QStringLiteral("正在读取使用统计…"), false);
    FitRows(mostHeight);
    client.Send(ListUsageRequest{shownDays}, this, [this](const auto& result) { SlotListed(result); });
}

UsageDialog::~UsageDialog() = default;

void UsageDialog::SlotListed(const VersionServiceResult<QVector<VersionServiceUsageCount>>& result)
{
    if (result.success)
        AddDays(result.value);
    const QString nothing = result.value.isEmpty() ? QStringLiteral("最近没有使用记录。") : QString();
    Say(result.success ? nothing : result.errorDesc, !result.success);
    FitRows(mostHeight);
}

void UsageDialog::AddDays(const QVector<VersionServiceUsageCount>& counts)
{
    QDate day;
    WbLabel* row = nullptr;
    for (const VersionServiceUsageCount& count : counts) {
        const QString text = QStringLiteral("%1 %2 次").arg(NameOf(count.event)).arg(count.count);
        if (row && count.day == day) {
            row->setText(row->text() + QStringLiteral("，") + text);
            continue;
        }
        day = count.day;
        row = MakeLabel("labelDay", DayText(day, dateLanguage) + QStringLiteral("　") + text, this);
        row->setWordWrap(true);
        Rows()->addWidget(row);
    }
}
