// SPDX-License-Identifier: Apache-2.0

#include "GuideWindow.h"

#include "GuidePages.h"
#include "GuideView.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QTreeWidget>

#include <algorithm>

namespace
{
constexpr QSize usual(960, 640);
constexpr int contentsWidth = 220;
constexpr int pageRole = Qt::UserRole;
constexpr int headingRole = Qt::UserRole + 1;
} // namespace

GuideWindow::GuideWindow(QWidget* window)
    : WbBaseWidget(window), contents(new QTreeWidget), view(new GuideView)
{
    setWindowFlag(Qt::Window);
    setObjectName(QStringLiteral("GuideWindow"));
    setWindowTitle(QStringLiteral("使用指南"));
    contents->setObjectName(QStringLiteral("listContents"));
    contents->setAccessibleName(QStringLiteral("目录"));
    contents->setHeaderHidden(true);
    contents->setFixedWidth(contentsWidth);
    view->setObjectName(QStringLiteral("guideView"));
    view->setAccessibleName(QStringLiteral("使用指南的正文"));
    auto* columns = new QHBoxLayout;
    columns->setSpacing(0);
    columns->addWidget(contents);
    columns->addWidget(view, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(CreateSearch());
    layout->addLayout(columns, 1);
    resize(usual.boundedTo(window->screen()->availableSize()));
    WbScaledForm::Follow(this);
    FillContents();

    connect(contents, &QTreeWidget::currentItemChanged, this, &GuideWindow::ShowChosen);
    connect(contents, &QTreeWidget::itemClicked, this, &GuideWindow::ShowChosen);
    connect(view, &QTextBrowser::sourceChanged, this, &GuideWindow::MarkPage);
}

GuideWindow::~GuideWindow() = default;

QWidget* GuideWindow::CreateSearch()
{
    auto* bar = new QWidget;
    editSearch = new WbLineEdit;
    editSearch->setObjectName(QStringLiteral("editGuideSearch"));
    editSearch->setAccessibleName(QStringLiteral("搜索使用指南"));
    editSearch->setPlaceholderText(QStringLiteral("搜索使用指南，回车查找下一处"));
    editSearch->setClearButtonEnabled(true);
    editSearch->setMaximumWidth(320);
    auto* next = new WbPushButton(nullptr, Wb::SecondaryButton);
    next->setObjectName(QStringLiteral("buttonGuideNext"));
    next->setText(QStringLiteral("查找下一处"));
    labelFound = new WbLabel;
    labelFound->setObjectName(QStringLiteral("labelGuideFound"));
    labelFound->setTextFormat(Qt::PlainText);
    labelFound->setProperty("hint", true);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    layout->addWidget(editSearch, 1);
    layout->addWidget(next);
    layout->addWidget(labelFound);
    layout->addStretch();
    connect(editSearch, &QLineEdit::returnPressed, this, &GuideWindow::FindNext);
    connect(editSearch, &QLineEdit::textChanged, labelFound, &QLabel::clear);
    connect(next, &QPushButton::clicked, this, &GuideWindow::FindNext);
    return bar;
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
        auto* item = new QTreeWidgetItem(contents, {page.title});
        add(item, page.file, QString());
        for (const QString& heading : page.headings)
            add(new QTreeWidgetItem(item), page.file, heading);
    }
    contents->expandAll();
}

void GuideWindow::Open(const QString& page, const QString& heading)
{
    show();
    raise();
    activateWindow();
    view->ShowPage(page, heading);
    contents->setFocus(Qt::OtherFocusReason);
}

void GuideWindow::ShowChosen()
{
    const QTreeWidgetItem* const item = contents->currentItem();
    view->ShowPage(item->data(0, pageRole).toString(), item->data(0, headingRole).toString());
}

// A link leads to another page than the one that the contents show.
void GuideWindow::MarkPage()
{
    const QTreeWidgetItem* const current = contents->currentItem();
    if (current && current->data(0, pageRole).toString() == view->GetPage())
        return;
    const QSignalBlocker quiet(contents);
    for (int i = 0; i < contents->topLevelItemCount(); ++i)
        if (contents->topLevelItem(i)->data(0, pageRole).toString() == view->GetPage())
            contents->setCurrentItem(contents->topLevelItem(i));
}

bool GuideWindow::FindOn(int page, bool fromTop)
{
    const QString file = GuidePages::All().at(page).file;
    if (file != view->GetPage())
        view->setSource(QUrl(GuidePages::FolderAddress() + file));
    if (fromTop)
        view->moveCursor(QTextCursor::Start);
    return view->find(editSearch->text().trimmed());
}

// From where the reader is through all pages, and back to the beginning.
void GuideWindow::FindNext()
{
    if (editSearch->text().trimmed().isEmpty())
        return;
    const auto& pages = GuidePages::All();
    const QString before = view->GetPage();
    const auto found = std::find_if(pages.begin(), pages.end(),
                                    [&before](const GuidePage& page) { return page.file == before; });
    const int first = found == pages.end() ? 0 : int(found - pages.begin());
    for (int step = 0; step <= pages.size(); ++step) {
        if (FindOn((first + step) % pages.size(), step > 0)) {
            labelFound->clear();
            return;
        }
    }
    labelFound->setText(QStringLiteral("没有找到，请换一个词"));
}

void GuideWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->matches(QKeySequence::Find)) {
        editSearch->setFocus(Qt::ShortcutFocusReason);
        editSearch->selectAll();
    } else {
        WbBaseWidget::keyPressEvent(event);
    }
}
