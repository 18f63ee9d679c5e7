// SPDX-License-Identifier: Apache-2.0

#include "AppTabs.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QToolButton>
#include <QVariant>

AppTabs::AppTabs(Tab shown, QWidget* parent) : QWidget(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(20);
    const std::pair<const char*, QString> tabs[] = {
        {"tabMine", QStringLiteral("我的应用")},
        {"tabOnline", QStringLiteral("线上应用")},
        {"tabGray", QStringLiteral("灰度应用")},
    };
    int tab = Mine;
    for (const auto& [objectName, text] : tabs) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(objectName));
        button->setText(text);
        button->setProperty("appTab", QVariant(true));
        button->setCheckable(true);
        button->setChecked(tab == shown);
        button->setCursor(Qt::PointingHandCursor);
        layout->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, button, tab, shown] {
            button->setChecked(tab == shown); // the mark belongs to the page
            if (tab != shown)
                emit SigChosen(tab);
        });
        ++tab;
    }
    WbScaledForm::Follow(this);
}
