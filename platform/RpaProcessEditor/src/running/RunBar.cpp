// SPDX-License-Identifier: Apache-2.0

#include "RunBar_p.h"
#include "RunSettings_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <RpaEngineModule/RpaDebugSession.h>

#include <QAction>
#include <QToolButton>

namespace
{
QString SlowText(int milliseconds)
{
    return milliseconds == 0 ? QStringLiteral("不放慢")
                             : QStringLiteral("%1 秒/步").arg(milliseconds / 1000.0, 0, 'f', 1);
}

void Show(QToolButton* button, QAction* action)
{
    button->setDefaultAction(action);
    const auto say = [button, action] { button->setAccessibleName(action->text()); };
    QObject::connect(action, &QAction::changed, button, say);
    say();
}
} // namespace

RunBar::RunBar(const QWidget* page, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("runBar"));
    ui.setupUi(this);
    for (QToolButton* button : findChildren<QToolButton*>()) {
        QString name = button->objectName();
        name.chop(int(qstrlen("Button")));
        if (auto* action = page->findChild<QAction*>(name))
            Show(button, action);
    }
    ui.sliderSlow->setMaximum(RpaDebugSession::slowestMs);
    DpiFollower::Follow(this, [this] {
        const int side = DpiTool::ScaleDefault(6);
        ui.layoutRunBar->setContentsMargins(side, 0, side, 0);
        ui.sliderSlow->setFixedWidth(DpiTool::ScaleDefault(100));
        ui.labelSlowValue->setMinimumWidth(
            ui.labelSlowValue->fontMetrics().horizontalAdvance(SlowText(RpaDebugSession::slowestMs)) +
            2 * ui.labelSlowValue->margin());
        setMinimumWidth(DpiTool::ScaleDefault(320)); // without what goes when it is narrow
    });
    RunSettings* const settings = RunSettings::Instance();
    settings->AddUser();
    ShowSettings();
    connect(settings, &RunSettings::SigChanged, this, &RunBar::ShowSettings);
    connect(ui.sliderSlow, &QSlider::valueChanged, settings, &RunSettings::SetSlowMs);
    connect(ui.checkErrorStop, &QCheckBox::toggled, settings, &RunSettings::SetStopsAtErrors);
}

RunBar::~RunBar()
{
    RunSettings::Instance()->disconnect(this);
    RunSettings::Instance()->RemoveUser();
}

void RunBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    constexpr int roomyWidth = 560;
    const bool roomy = width() >= DpiTool::ScaleDefault(roomyWidth);
    for (QWidget* part : std::initializer_list<QWidget*>{ui.labelSlow, ui.sliderSlow, ui.labelSlowValue})
        part->setVisible(roomy);
}

void RunBar::ShowSettings()
{
    const RunSettings* const settings = RunSettings::Instance();
    ui.sliderSlow->setValue(settings->GetSlowMs());
    ui.labelSlowValue->setText(SlowText(settings->GetSlowMs()));
    ui.checkErrorStop->setChecked(settings->GetStopsAtErrors());
}
