// SPDX-License-Identifier: Apache-2.0

#include "Appearance.h"

#include "WorkstationSettings.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QPalette>

Appearance::Appearance(const WorkstationSettings* store)
    : settings(store), systemIsDark(QApplication::palette().color(QPalette::Window).lightness() < 128)
{
    ApplyScale();
    ApplyTheme();
    connect(settings, &WorkstationSettings::SigThemeChanged, this, &Appearance::ApplyTheme);
    connect(settings, &WorkstationSettings::SigScaleChanged, this, &Appearance::ApplyScale);
}

void Appearance::ApplyTheme()
{
    const ThemeChoice choice = settings->GetTheme();
    const bool dark = choice == ThemeChoice::Dark || (choice == ThemeChoice::System && systemIsDark);
    WbTheme::Instance()->Apply(dark ? WbTheme::Scheme::Dark : WbTheme::Scheme::Light);
}

void Appearance::ApplyScale()
{
    DpiTool::SetScale(settings->GetScale() / 100.0);
}
