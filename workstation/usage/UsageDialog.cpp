// SPDX-License-Identifier: Apache-2.0

#include "UsageDialog.h"

#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QHash>

namespace
{
constexpr int shownDays = 30;

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

UsageDialog::UsageDialog(QWidget* parent)
    : RowsDialog(QStringLiteral("使用统计"),
                 QStringLiteral("本单位所有账号最近 %1 天的操作次数（按世界协调时间分日）。").arg(shownDays),
                 parent)
{
    setObjectName(QStringLiteral("UsageDialog"));
    GetContentWidget()->setMinimumSize(560, 400);
    WbScaledForm::Follow(GetContentWidget());
    Say(QStringLiteral("正在读取使用统计…"), false);
    client.Send(ListUsageRequest{shownDays}, this, [this](const auto& result) { SlotListed(result); });
}

UsageDialog::~UsageDialog() = default;

void UsageDialog::SlotListed(const VersionServiceResult<QVector<VersionServiceUsageCount>>& result)
{
    if (!result.success)
        return Say(result.errorDesc, true);
    Say(result.value.isEmpty() ? QStringLiteral("最近没有使用记录。") : QString(), false);
    QDate day;
    WbLabel* row = nullptr;
    for (const VersionServiceUsageCount& count : result.value) {
        const QString text = QStringLiteral("%1 %2 次").arg(NameOf(count.event)).arg(count.count);
        if (row && count.day == day) {
            row->setText(row->text() + QStringLiteral("，") + text);
            continue;
        }
        day = count.day;
        row = MakeLabel("labelDay", day.toString(Qt::ISODate) + QStringLiteral("　") + text, this);
        row->setWordWrap(true);
        Rows()->addWidget(row);
    }
    Rows()->addStretch();
}
