// SPDX-License-Identifier: Apache-2.0

#include "CodeFoldStrip_p.h"
#include "CodeFolds_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>

CodeFoldStrip::CodeFoldStrip(QPlainTextEdit* codeEdit, CodeFolds* codeFolds)
    : QWidget(codeEdit), edit(codeEdit), folds(codeFolds)
{
    setObjectName(QStringLiteral("codeFoldStrip"));
    setCursor(Qt::PointingHandCursor);
    setToolTip(QStringLiteral("折叠或展开"));
}

void CodeFoldStrip::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(WbTheme::Instance()->Color(WbColor::TextSecondary));
    QTextBlock block = edit->cursorForPosition(QPoint(0, 0)).block();
    for (; block.isValid(); block = block.next()) {
        if (!block.isVisible())
            continue;
        const QRect line = edit->cursorRect(QTextCursor(block));
        if (line.top() > event->rect().bottom())
            return;
        if (CodeFolds::IsHead(block))
            PaintTriangle(painter, QRectF(0, line.top(), width, line.height()), folds->IsFolded(block));
    }
}

void CodeFoldStrip::PaintTriangle(QPainter& painter, const QRectF& area, bool isFolded) const
{
    constexpr qreal half = 3.5;
    const QVector<QPointF> open{{-half, -half / 2}, {half, -half / 2}, {0, half}};
    const QVector<QPointF> closed{{-half / 2, -half}, {half, 0}, {-half / 2, half}};
    painter.drawPolygon(QPolygonF(isFolded ? closed : open).translated(area.center()));
}

void CodeFoldStrip::mousePressEvent(QMouseEvent* event)
{
    const QTextBlock block = edit->cursorForPosition(QPoint(0, event->pos().y())).block();
    if (event->button() != Qt::LeftButton || !CodeFolds::IsHead(block))
        return;
    if (folds->IsFolded(block))
        folds->Unfold(block);
    else
        folds->Fold(block);
}
