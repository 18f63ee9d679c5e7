// SPDX-License-Identifier: Apache-2.0

#include "LogPlace_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbBaseWidget.h>
#include <WbBaseUI/WbLabel.h>

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
// The page that the widget is a part of.
QWidget* PageOf(QWidget* widget)
{
    QWidget* page = widget->parentWidget();
    while (page && !page->isWindow() && !qobject_cast<WbBaseWidget*>(page))
        page = page->parentWidget();
    return page ? page : widget;
}

// The outermost page around it.
QWidget* OutermostPageOf(QWidget* widget)
{
    QWidget* outer = PageOf(widget);
    for (QWidget* up = outer->parentWidget(); up && !outer->isWindow() && !up->isWindow();
         up = up->parentWidget())
        if (qobject_cast<WbBaseWidget*>(up))
            outer = up;
    return outer;
}

void Replace(QWidget* host, QWidget* leaving, QWidget* coming)
{
    if (auto* splitter = qobject_cast<QSplitter*>(host)) {
        const QList<int> sizes = splitter->sizes();
        splitter->replaceWidget(splitter->indexOf(leaving), coming);
        splitter->setSizes(sizes);
    } else if (host->layout()) {
        delete host->layout()->replaceWidget(leaving, coming);
    } else {
        coming->setParent(host);
        coming->setGeometry(leaving->geometry());
    }
}

// A window has a margin of its own, a page has one around it.
void Fill(QWidget* holder, QWidget* content)
{
    const int margin = holder->isWindow() ? DpiTool::ScaleDefault(12) : 0;
    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(content);
    content->show();
}
} // namespace

LogPlace::LogPlace(QWidget* shownLog) : QObject(shownLog), log(shownLog)
{
    connect(qApp, &QApplication::focusChanged, this, &LogPlace::SlotFocusChanged);
}

void LogPlace::Enlarge()
{
    Return();
    page = PageOf(log);
    cover = new QWidget(page);
    cover->setObjectName(QStringLiteral("logCover"));
    cover->setAutoFillBackground(true);
    cover->setGeometry(page->rect());
    page->installEventFilter(this);
    LeaveFor(cover);
    cover->show();
    cover->raise();
    log->setFocus();
    emit SigChanged();
}

void LogPlace::Detach()
{
    Return();
    outer = OutermostPageOf(log);
    outer->installEventFilter(this);
    window = new WbBaseWidget(PageOf(log), Qt::Window);
    window->setObjectName(QStringLiteral("logWindow"));
    window->setWindowTitle(QStringLiteral("运行日志"));
    window->resize(DpiTool::ScaleDefault(760), DpiTool::ScaleDefault(420));
    window->installEventFilter(this);
    LeaveFor(window);
    window->show();
    emit SigChanged();
}

void LogPlace::LeaveFor(QWidget* holder)
{
    QWidget* host = log->parentWidget();
    const QScopedValueRollback<bool> guard(moving, true);
    const bool hadFocus = log->isAncestorOf(QApplication::focusWidget());
    standIn = MakeStandIn();
    Replace(host, log, standIn);
    standIn->show();
    Fill(holder, log);
    if (hadFocus)
        log->setFocus();
}

QWidget* LogPlace::MakeStandIn()
{
    auto* keeper = new QWidget; // whatever holds the log takes it over
    keeper->setObjectName(QStringLiteral("logStandIn"));
    keeper->setMinimumHeight(log->minimumSizeHint().height());
    keeper->setSizePolicy(log->sizePolicy());
    auto* label = new WbLabel(QStringLiteral("日志在单独的窗口中显示"));
    label->setProperty("wbRole", QStringLiteral("secondary"));
    auto* back = new QToolButton;
    back->setObjectName(QStringLiteral("logBack"));
    back->setText(QStringLiteral("放回这里"));
    auto* layout = new QVBoxLayout(keeper);
    layout->addStretch();
    layout->addWidget(label, 0, Qt::AlignHCenter);
    layout->addWidget(back, 0, Qt::AlignHCenter);
    layout->addStretch();
    connect(back, &QToolButton::clicked, this, &LogPlace::Return);
    return keeper;
}

void LogPlace::Return()
{
    QWidget* holder = cover ? cover.data() : window.data();
    if (!holder)
        return;
    cover = nullptr;
    window = nullptr;
    for (QWidget* watched : {page.data(), outer.data(), holder})
        if (watched)
            watched->removeEventFilter(this);
    const bool hadFocus = log->isAncestorOf(QApplication::focusWidget());
    if (standIn) {
        QWidget* host = standIn->parentWidget();
        Replace(host, standIn, log);
        log->show();
        standIn->hide();
        standIn->deleteLater(); // its own button may have brought us here
    }
    holder->hide();
    holder->deleteLater();
    if (hadFocus)
        log->setFocus();
    emit SigChanged();
}

// What is covered must not have the keyboard.
void LogPlace::SlotFocusChanged(QWidget*, QWidget* to)
{
    if (cover && !moving && to && page->isAncestorOf(to) && !cover->isAncestorOf(to))
        Return();
}

bool LogPlace::eventFilter(QObject* watched, QEvent* event)
{
    if (cover && watched == page && event->type() == QEvent::Resize)
        cover->setGeometry(page->rect());
    const bool closed = window && watched == window && event->type() == QEvent::Close;
    const bool left = window && watched == outer && event->type() == QEvent::Hide && !event->spontaneous();
    if (closed)
        Return();
    // What hides may be about to be destroyed, with everything that a log could come back to.
    if (left)
        QMetaObject::invokeMethod(this, &LogPlace::Return, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}
