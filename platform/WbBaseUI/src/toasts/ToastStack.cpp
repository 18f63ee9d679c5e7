// SPDX-License-Identifier: Apache-2.0

#include "ToastPlace_p.h"
#include "ToastStack_p.h"
#include "ToastWidget_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIMain.h>

#include <QApplication>
#include <QEvent>

#include <algorithm>

namespace
{
constexpr int mostToasts = 4;
constexpr int mostInDialog = 1; // its last answer counts: an older one would be about fields mended since
constexpr int stackSideMargin = 16;

bool CanHost(const QWidget* widget)
{
    if (!widget || !widget->isVisible() || widget->isMinimized())
        return false;
    const Qt::WindowType type = widget->windowType();
    return type == Qt::Window || type == Qt::Dialog;
}

QWidget* FirstUsable(const QWidgetList& candidates)
{
    const auto found = std::find_if(candidates.begin(), candidates.end(), CanHost);
    return found == candidates.end() ? nullptr : *found;
}
} // namespace

QWidget* ToastWindow()
{
    const QWidgetList preferred = {QApplication::activeModalWidget(), QApplication::activeWindow(),
                                   UIMain::Instance()->GetMainWidget(nullptr)};
    QWidget* window = FirstUsable(preferred);
    return window ? window : FirstUsable(QApplication::topLevelWidgets());
}

ToastStack* ToastStack::Of(QWidget* window)
{
    auto* stack = window->findChild<ToastStack*>(QString(), Qt::FindDirectChildrenOnly);
    return stack ? stack : new ToastStack(window);
}

ToastStack::ToastStack(QWidget* w) : QObject(w), window(w)
{
    window->installEventFilter(this);
    looking.setSingleShot(true);
    looking.setInterval(0);
    connect(&looking, &QTimer::timeout, this, &ToastStack::LookBeneath);
}

void ToastStack::Show(const QString& text, ENUM_TOAST_TYPE type)
{
    // The same notice again takes the place of the first; a row of equal notices would tell nothing more.
    const auto same = std::find_if(toasts.begin(), toasts.end(), [&text, type](const ToastWidget* toast) {
        return toast->GetText() == text && toast->GetType() == type;
    });
    if (same != toasts.end())
        Remove(*same);
    auto* toast = new ToastWidget(text, type, window);
    Adopt(toast);
    toast->FadeIn();
}

void ToastStack::Adopt(ToastWidget* toast)
{
    if (toast->parentWidget() != window)
        toast->setParent(window);
    connect(toast, &ToastWidget::SigGone, this, [this, toast] { Remove(toast); });
    toasts.append(toast);
    while (toasts.size() > (window->windowType() == Qt::Dialog ? mostInDialog : mostToasts))
        Remove(toasts.constFirst());
    toast->show();
    Arrange();
}

void ToastStack::Remove(ToastWidget* toast)
{
    if (toasts.removeOne(toast)) {
        toast->hide();
        toast->deleteLater();
        Arrange();
    }
}

bool ToastStack::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == window && event->type() == QEvent::Resize)
        Arrange();
    else if (watched == window && event->type() == QEvent::LayoutRequest && !toasts.isEmpty())
        looking.start(); // once the new layout stands
    else if (watched == window && event->type() == QEvent::Hide && !event->spontaneous())
        MoveToNextWindow();
    return QObject::eventFilter(watched, event);
}

// A dialog that shows a notice and closes at once would take it away unread.
void ToastStack::MoveToNextWindow()
{
    if (toasts.isEmpty() || QCoreApplication::closingDown())
        return;
    QWidget* owner = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    QWidget* next = CanHost(owner) ? owner : ToastWindow();
    const QVector<ToastWidget*> leaving = toasts;
    toasts.clear();
    for (ToastWidget* toast : leaving) {
        toast->disconnect(this);
        if (next && next != window)
            Of(next)->Adopt(toast);
        else
            toast->deleteLater();
    }
}

void ToastStack::Clear()
{
    while (!toasts.isEmpty())
        Remove(toasts.constLast());
}

void ToastStack::Arrange()
{
    if (toasts.isEmpty())
        return;
    const ToastPlace place(window);
    QVector<QSize> sizes;
    for (ToastWidget* toast : qAsConst(toasts)) {
        toast->FitInto(window->width() - 2 * DpiTool::ScaleDefault(stackSideMargin));
        sizes.append(toast->size());
    }
    const QVector<QRect> column = place.Find(sizes);
    const bool inTheWay = std::any_of(column.begin(), column.end(), [&place](const QRect& rect) {
        return place.CoversSomethingInUse(rect);
    });
    if (toasts.size() > 1 && inTheWay) {
        // Where there is no room for all, the latest counts.
        Remove(toasts.constFirst());
        return;
    }
    for (int i = 0; i < toasts.size(); ++i) {
        toasts.at(i)->move(column.at(i).topLeft());
        toasts.at(i)->raise();
    }
    LetMouseThrough(place);
}

// What was hidden may have come back below a notice. It moves only where it is in the way: it is being read.
void ToastStack::LookBeneath()
{
    const ToastPlace place(window);
    const bool inTheWay =
        std::any_of(toasts.constBegin(), toasts.constEnd(), [&place](const ToastWidget* toast) {
            return place.CoversSomethingInUse(toast->geometry());
        });
    if (inTheWay)
        Arrange();
}

// Where there is no better place, a notice lets the mouse through.
void ToastStack::LetMouseThrough(const ToastPlace& place)
{
    for (ToastWidget* toast : qAsConst(toasts))
        toast->SetMousePasses(place.CoversSomethingInUse(toast->geometry()));
}
