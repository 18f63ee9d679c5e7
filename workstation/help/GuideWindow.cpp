// SPDX-License-Identifier: Apache-2.0

#include "GuideWindow.h"

#include "GuidePages.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>

#include <algorithm>

namespace
{
constexpr QSize usual(960, 640);
constexpr int pageRole = Qt::UserRole;
constexpr int headingRole = Qt::UserRole + 1;
} // namespace

GuideWindow::GuideWindow(QWidget* window) : WbBaseWidget(window)
{
    setWindowFlag(Qt::Window);
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    resize(usual.boundedTo(window->screen()->availableSize()));
    FillContents();
    connect(ui.editGuideSearch, &QLineEdit::returnPressed, this, &GuideWindow::FindNext);
    connect(ui.editGuideSearch, &QLineEdit::textChanged, ui.labelGuideFound, &QLabel::clear);
    connect(ui.buttonGuideNext, &QPushButton::clicked, this, &GuideWindow::FindNext);
    connect(ui.listContents, &QTreeWidget::currentItemChanged, this, &GuideWindow::ShowChosen);
    connect(ui.listContents, &QTreeWidget::itemClicked, this, &GuideWindow::ShowChosen);
    connect(ui.guideView, &QTextBrowser::sourceChanged, this, &GuideWindow::MarkPage);
}

void GuideWindow::FillContents()
{
    const auto add = [](QTreeWidgetItem* item, const QString& page, const QString& heading) {
        item->setText(0, heading.isEmpty() ? item->text(0) : heading);
        item->setToolTip(0, item->text(0));
        item->setData(0, pageRole, page);
        item->setData(0, headingRole, heading);
    };
    for (const GuidePage& page : GuidePages::All()) {
        auto* item = new QTreeWidgetItem(ui.listContents, {page.title});
        add(item, page.file, QString());
        for (const QString& heading : page.headings)
            add(new QTreeWidgetItem(item), page.file, heading);
    }
    ui.listContents->expandAll();
}

void GuideWindow::Open(const QString& page, const QString& heading)
{
    show();
    raise();
    activateWindow();
    ui.guideView->ShowPage(page, heading);
    ui.listContents->setFocus(Qt::OtherFocusReason);
}

void GuideWindow::ShowChosen()
{
    const QTreeWidgetItem* const item = ui.listContents->currentItem();
    ui.guideView->ShowPage(item->data(0, pageRole).toString(), item->data(0, headingRole).toString());
}

// A link leads to another page than the one that the contents show.
void GuideWindow::MarkPage()
{
    const QTreeWidgetItem* const current = ui.listContents->currentItem();
    if (current && current->data(0, pageRole).toString() == ui.guideView->GetPage())
        return;
    const QSignalBlocker quiet(ui.listContents);
    for (int i = 0; i < ui.listContents->topLevelItemCount(); ++i)
        if (ui.listContents->topLevelItem(i)->data(0, pageRole).toString() == ui.guideView->GetPage())
            ui.listContents->setCurrentItem(ui.listContents->topLevelItem(i));
}

bool GuideWindow::FindOn(int page, bool fromTop)
{
    const QString file = GuidePages::All().at(page).file;
    if (file != ui.guideView->GetPage())
        ui.guideView->setSource(QUrl(GuidePages::FolderAddress() + file));
    if (fromTop)
        ui.guideView->moveCursor(QTextCursor::Start);
    return ui.guideView->find(ui.editGuideSearch->text().trimmed());
}

// From where the reader is through all pages, and back to the beginning.
void GuideWindow::FindNext()
{
    if (ui.editGuideSearch->text().trimmed().isEmpty())
        return;
    const auto& pages = GuidePages::All();
    const QString before = ui.guideView->GetPage();
    const auto found = std::find_if(pages.begin(), pages.end(),
                                    [&before](const GuidePage& page) { return page.file == before; });
    const int first = found == pages.end() ? 0 : int(found - pages.begin());
    for (int step = 0; step <= pages.size(); ++step) {
        if (FindOn((first + step) % pages.size(), step > 0)) {
            ui.labelGuideFound->clear();
            return;
        }
    }
    ui.labelGuideFound->setText(QStringLiteral("没有找到，请换一个词"));
}

void GuideWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->matches(QKeySequence::Find)) {
        ui.editGuideSearch->setFocus(Qt::ShortcutFocusReason);
        ui.editGuideSearch->selectAll();
    } else {
        WbBaseWidget::keyPressEvent(event);
    }
}
