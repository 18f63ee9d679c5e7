// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/IBrowserPointer.h>

#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QWidget>

class QWebEngineView;

// The pane of glass over the page while the user points: it takes the mouse and shows what is under it.
class PointerOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit PointerOverlay(QWidget* parent);

    void Mark(const QRectF& rect, const QString& label);
    void SetHint(const QString& text);
    // Where the wheel goes on to.
    void SetView(QWebEngineView* shown);

signals:
    void SigMoved(const QPointF& position);
    void SigPressed(const QPointF& position);
    void SigHidden();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void PaintLabel(QPainter& painter) const;

    QRectF marked;
    QString label;
    QString hint;
    QPointer<QWebEngineView> view;
};

class BrowserPointer : public IBrowserPointer
{
    Q_OBJECT

public:
    explicit BrowserPointer(QObject* parent) : IBrowserPointer(parent) {}
    ~BrowserPointer() override;

    // The view pages are shown in; null for none, which ends pointing.
    void SetView(QWebEngineView* shown);

    bool Start(const QString& describe, const QString& hint) override;
    void Stop() override;
    bool IsActive() const override { return glass; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotMoved(const QPointF& position);
    void SlotPressed(const QPointF& position) { Ask(position, true); }
    void Ask(const QPointF& position, bool picked);
    void TakeMark(const QVariant& description);
    void TakePick(const QVariant& description);
    void CoverView();

    QPointer<QWebEngineView> view;
    QPointer<PointerOverlay> glass;
    QPointer<QWidget> keyboardBefore; // who had it when pointing began
    QString script;
    QPointF latest;
    bool asking = false;  // one question at a time, however fast the mouse moves
    bool movedOn = false; // since the question under way
    int session = 0;      // answers to an earlier one are late
};
