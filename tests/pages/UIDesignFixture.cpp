// SPDX-License-Identifier: Apache-2.0

#include "UIDesignFixture.h"

#include "AddUIWidget.h"
#include "ModalDriver.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <WbBaseUI/RpaTabBar.h>

#include <QTabBar>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

void UIDesignFixture::init()
{
    ShowPageWithoutApp();
    app = MakeApp(3);
    page->SetRpaAppData(app);
}

void UIDesignFixture::cleanup()
{
    page.reset();
    DpiTool::SetScale(1.0);
}

RpaAppDataPtr UIDesignFixture::MakeApp(int pages)
{
    auto made = RpaAppDataPtr::create();
    made->InitDefault();
    made->GetUIDataManager()->Clear();
    for (int i = 0; i < pages; ++i) {
        RpaToolItem tool;
        tool.text = Text("工具%1").arg(i);
        made->GetUIDataManager()->AddUIData(Text("界面%1").arg(i), tool);
    }
    made->SetModified(false);
    return made;
}

void UIDesignFixture::ShowPageWithoutApp()
{
    page = std::make_unique<RpaAppUIDesignWidget>();
    page->show();
    bar = page->findChild<RpaTabBar*>(QStringLiteral("widgetTabBar"));
}

RpaUIDataManager* UIDesignFixture::Pages() const
{
    return app->GetUIDataManager();
}

QStringList UIDesignFixture::Tabs() const
{
    QStringList names;
    const auto* tabs = bar->findChild<QTabBar*>();
    for (int i = 0; i < tabs->count(); ++i)
        names.append(tabs->tabText(i));
    return names;
}

void UIDesignFixture::PressTab(int index) const
{
    auto* tabs = bar->findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
}

void UIDesignFixture::PressAdd() const
{
    QTest::mouseClick(bar->findChild<QToolButton*>(QStringLiteral("buttonAddTab")), Qt::LeftButton);
}

void UIDesignFixture::AddPage(const QString& name) const
{
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([name](AddUIWidget* dialog) {
        dialog->SetName(name);
        ModalDriver::Press(dialog, Text("确定"));
    });
    PressAdd();
}

QString UIDesignFixture::ToolInPanel() const
{
    const auto* records =
        page->findChild<QWidget*>(QStringLiteral("widgetToolEditor"))->findChild<QTableView*>();
    return records->model()->index(0, 0).data().toString();
}
