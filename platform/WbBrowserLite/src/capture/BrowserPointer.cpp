// SPDX-License-Identifier: Apache-2.0

#include "BrowserPointer_p.h"
#include "BrowserWorlds_p.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWebEnginePage>
#include <QWebEngineView>

BrowserPointer::~BrowserPointer()
{
    Stop();
}

void BrowserPointer::SetView(QWebEngineView* shown)
{
    Stop();
    view = shown;
}

bool BrowserPointer::Start(const QString& describe, const QString& hint)
{
    if (!view || !view->isVisible())
        return false;
    Stop();
    script = describe;
    asking = movedOn = false;
    ++session;
    glass = new PointerOverlay(view->parentWidget());
    glass->SetHint(hint);
    glass->SetView(view);
    connect(glass, &PointerOverlay::SigMoved, this, &BrowserPointer::SlotMoved);
    connect(glass, &PointerOverlay::SigPressed, this, &BrowserPointer::SlotPressed);
    connect(glass, &PointerOverlay::SigHidden, this, &BrowserPointer::Stop);
    connect(view->page(), &QWebEnginePage::loadStarted, glass, [this] { glass->Mark(QRectF(), QString()); });
    CoverView();
    view->installEventFilter(this);
    qApp->installEventFilter(this);
    glass->show();
    glass->raise();
    keyboardBefore = view->window()->focusWidget();
    glass->setFocus();
    return true;
}

void BrowserPointer::Stop()
{
    if (!glass)
        return;
    PointerOverlay* const gone = glass;
    glass = nullptr; // hiding it comes back here
    qApp->removeEventFilter(this);
    if (view)
        view->removeEventFilter(this);
    // Left to itself the keyboard would go to whatever comes next in the window.
    if (keyboardBefore && gone->window()->focusWidget() == gone)
        keyboardBefore->setFocus();
    gone->hide();
    gone->deleteLater(); // its own signal may have brought us here
    emit SigStopped();
}

void BrowserPointer::CoverView()
{
    glass->setGeometry(view->geometry());
}

bool BrowserPointer::eventFilter(QObject* watched, QEvent* event)
{
    if (!glass)
        return false;
    if (watched == view && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        CoverView();
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return false;
    // Wherever the keyboard is: the way out must not be searched for.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        Stop();
    return true;
}

void BrowserPointer::SlotMoved(const QPointF& position)
{
    latest = position;
    if (asking)
        movedOn = true;
    else
        Ask(position, false);
}

void BrowserPointer::Ask(const QPointF& position, bool picked)
{
    const QPointF point = position / view->zoomFactor();
    const QString call = QStringLiteral("(%1)(%2, %3, %4)")
                             .arg(script, QString::number(point.x()), QString::number(point.y()),
                                  picked ? QStringLiteral("true") : QStringLiteral("false"));
    if (!picked)
        asking = true;
    view->page()->runJavaScript(
        call, BrowserWorlds::pointer,
        [guard = QPointer<BrowserPointer>(this), asked = session, picked](const QVariant& description) {
            if (!guard || !guard->glass || guard->session != asked)
                return;
            if (picked)
                guard->TakePick(description);
            else
                guard->TakeMark(description);
        });
}

void BrowserPointer::TakeMark(const QVariant& description)
{
    asking = false;
    const QVariantMap told = description.toMap();
    const QVariantList numbers = told.value(QStringLiteral("rect")).toList();
    QRectF rect;
    if (numbers.size() == 4) {
        const qreal zoom = view->zoomFactor();
        rect = QRectF(numbers.at(0).toReal() * zoom, numbers.at(1).toReal() * zoom,
                      numbers.at(2).toReal() * zoom, numbers.at(3).toReal() * zoom)
                   .intersected(QRectF(glass->rect()));
    }
    glass->Mark(rect, told.value(QStringLiteral("label")).toString().left(200));
    if (movedOn) {
        movedOn = false;
        Ask(latest, false);
    }
}

void BrowserPointer::TakePick(const QVariant& description)
{
    const QVariantMap told = description.toMap();
    if (!told.isEmpty())
        emit SigPicked(told, view->url());
}
