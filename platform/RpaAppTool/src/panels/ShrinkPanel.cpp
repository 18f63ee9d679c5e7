// SPDX-License-Identifier: Apache-2.0

#include "ShrinkPanel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

ShrinkPanel::ShrinkPanel(const QString& panelTitle, QWidget* parent)
    : QWidget(parent), title(panelTitle), titleButton(new QToolButton), titleRow(new QHBoxLayout),
      rootLayout(new QVBoxLayout(this))
{
    titleButton->setObjectName(QStringLiteral("panelTitle"));
    titleButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    titleButton->setAutoRaise(true);
    titleButton->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(titleButton, &QToolButton::clicked, this, [this] { SetShrink(!shrunk); });

    titleRow->setContentsMargins(0, 0, 0, 0);
    titleRow->setSpacing(DpiTool::ScaleDefault(4));
    titleRow->addWidget(titleButton);
    rootLayout->setContentsMargins(0, 0, 0, 0);
    rootLayout->setSpacing(DpiTool::ScaleDefault(4));
    rootLayout->addLayout(titleRow);
    SetCount(0);
    titleButton->setIcon(WbIcons::Get(QStringLiteral("chevron-down")));
}

void ShrinkPanel::SetContent(QWidget* widget)
{
    content = widget;
    rootLayout->addWidget(widget, 1);
    widget->setVisible(!shrunk);
}

QToolButton* ShrinkPanel::AddAction(const QString& icon, const QString& tip)
{
    auto* button = UIUtils::IconButton(QString(), icon, tip);
    titleRow->addWidget(button);
    return button;
}

void ShrinkPanel::SetCount(int count)
{
    titleButton->setText(count > 0 ? QStringLiteral("%1（%2）").arg(title).arg(count) : title);
    titleButton->setAccessibleName(titleButton->text());
}

void ShrinkPanel::SetShrink(bool shrink)
{
    if (shrunk == shrink)
        return;
    shrunk = shrink;
    const QString icon = shrunk ? QStringLiteral("chevron-right") : QStringLiteral("chevron-down");
    titleButton->setIcon(WbIcons::Get(icon));
    setSizePolicy(QSizePolicy::Preferred, shrunk ? QSizePolicy::Fixed : QSizePolicy::Preferred);
    if (content)
        content->setVisible(!shrunk);
    emit SigShrinkChanged();
}
