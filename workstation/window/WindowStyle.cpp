#include "WindowStyle.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

namespace
{
QString Color(WbColor color)
{
    return WbTheme::Instance()->Color(color).name();
}

QString Px(int length)
{
    return QString::number(DpiTool::ScaleDefault(length)) + QStringLiteral("px");
}
} // namespace

QString WindowStyle()
{
    QString style = QStringLiteral(R"(
#mainHead { background: @surface; border-bottom: 1px solid @border; }
#labelTitle { font-size: @title; font-weight: 600; }
#labelPageTitle { font-size: @heading; font-weight: 600; }
*[appTab="true"] { font-size: @title; color: @secondary; background: transparent; border: none;
    border-bottom: 2px solid transparent; padding: 4px 0; }
*[appTab="true"]:checked { color: @text; font-weight: 600; border-bottom-color: @accent; }
*[appTab="true"]:hover, *[appTab="true"]:focus { color: @text; }
#viewManual, #scrollInvitations, #scrollInvitations > QWidget > QWidget { background: transparent; border: none; }
#labelSignInTitle { font-size: @heading; font-weight: 600; }
#labelEmpty { font-size: @title; }
#labelEmptyHint, #labelState, #labelDateSample, #labelAccount, *[hint="true"] { color: @secondary; }
#labelProblem, #labelAddressProblem, #labelState[problem="true"] { color: @danger; }
#signInCard, *[card="true"] { background: @surface; border: 1px solid @border; border-radius: @radius; }
*[sectionTitle="true"] { font-size: @title; font-weight: 600; }
#listApps, #listReleased, #scrollSettings, #settingsColumn { background: transparent; border: none; }
)");
    const std::pair<const char*, QString> values[] = {
        {"@surface", Color(WbColor::Surface)},
        {"@border", Color(WbColor::Border)},
        {"@text", Color(WbColor::Text)},
        {"@accent", Color(WbColor::Accent)},
        {"@secondary", Color(WbColor::TextSecondary)},
        {"@danger", Color(WbColor::DangerText)},
        {"@title", Px(16)},
        {"@heading", Px(20)},
        {"@radius", Px(8)},
    };
    for (const auto& [name, value] : values) {
        style.replace(QLatin1String(name), value);
    }
    return style;
}
