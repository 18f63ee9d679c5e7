// SPDX-License-Identifier: Apache-2.0

#include "UsageSection.h"

#include "WorkstationSettings.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QCheckBox>

UsageSection::UsageSection(WorkstationSettings* settings, QWidget* parent)
    : WbBaseWidget(parent), checkReports(new QCheckBox(this)),
      buttonCounts(new WbPushButton(this, Wb::SecondaryButton))
{
    setObjectName(QStringLiteral("sectionUsage"));
    setProperty("card", true);
    auto* title = new WbLabel(QStringLiteral("使用统计"), this);
    title->setProperty("sectionTitle", true);
    auto* hint =
        new WbLabel(QStringLiteral("只发送保存、发布、运行等操作的名称和时间，不含应用的任何内容，"
                                   "供本单位的管理员统计次数，90 天后删除。取消后，尚未发送的也一并删除。"),
                    this);
    hint->setProperty("hint", true);
    hint->setWordWrap(true);
    checkReports->setObjectName(QStringLiteral("checkUsageReports"));
    checkReports->setText(QStringLiteral("向版本服务发送使用统计"));
    checkReports->setChecked(settings->GetUsageReports());
    buttonCounts->setObjectName(QStringLiteral("buttonUsageCounts"));
    buttonCounts->setText(QStringLiteral("查看使用统计"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(title);
    layout->addWidget(checkReports, 0, Qt::AlignLeft);
    layout->addWidget(hint);
    layout->addWidget(buttonCounts, 0, Qt::AlignLeft);
    WbScaledForm::Follow(this);
    ShowAdministrator(false);

    connect(checkReports, &QCheckBox::toggled, settings, &WorkstationSettings::SetUsageReports);
    connect(settings, &WorkstationSettings::SigUsageReportsChanged, checkReports, &QCheckBox::setChecked);
    connect(buttonCounts, &QPushButton::clicked, this, &UsageSection::SigShowCounts);
}

void UsageSection::ShowAdministrator(bool isAdministrator)
{
    buttonCounts->setVisible(isAdministrator);
}
