// SPDX-License-Identifier: Apache-2.0

#include "HelpFlow.h"

#include "GuideWindow.h"
#include "MainWindow.h"

namespace
{
struct Chapter
{
    const char* part; // of the editor, or a page of the window
    QString page;
    QString heading;
};

// What the guide says of the place where the user is.
Chapter ChapterOf(const QWidget& page)
{
    static const Chapter chapters[] = {
        {"pageUIDesign", QStringLiteral("first-app.md"), QStringLiteral("2. 界面设计")},
        {"pageProcess", QStringLiteral("first-app.md"), QStringLiteral("3. 流程设计")},
        {"pageExtendInfo", QStringLiteral("first-app.md"), QString()},
        {"tabsAside", QStringLiteral("release.md"), QStringLiteral("4. 使用者怎样运行")},
        {"buttonRedeem", QStringLiteral("release.md"), QStringLiteral("2. 先灰度")},
    };
    for (const Chapter& chapter : chapters) {
        const auto* part = page.findChild<QWidget*>(QLatin1String(chapter.part));
        if (part && part->isVisible())
            return chapter;
    }
    return {"", QStringLiteral("README.md"), QString()};
}
} // namespace

HelpFlow::HelpFlow(WorkstationSettings* settings, EditorPage* editor, MainWindow* mainWindow)
    : window(mainWindow), tips(settings, mainWindow, editor)
{
}

void HelpFlow::ShowGuide()
{
    if (!guide)
        guide = new GuideWindow(window);
    const Chapter chapter = ChapterOf(*window->CurrentPage());
    guide->Open(chapter.page, chapter.heading);
}
