// SPDX-License-Identifier: Apache-2.0

#include "RpaPageHint.h"

#include <QEvent>

#include <algorithm>

RpaPageHint::RpaPageHint(const QString& text, QWidget* place, const QVector<QWidget*>& contents)
    : WbLabel(text, place), parts(contents)
{
    parts.removeAll(nullptr);
    setObjectName(QStringLiteral("emptyHint"));
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    place->installEventFilter(this);
    for (QWidget* part : qAsConst(parts))
        part->installEventFilter(this);
    Update();
}

bool RpaPageHint::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type what = event->type();
    if (watched == parentWidget() && what == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    else if (what == QEvent::ShowToParent || what == QEvent::HideToParent)
        Update();
    return WbLabel::eventFilter(watched, event);
}

void RpaPageHint::Update()
{
    setGeometry(parentWidget()->rect());
    setVisible(
        std::all_of(parts.cbegin(), parts.cend(), [](const QWidget* part) { return part->isHidden(); }));
}
