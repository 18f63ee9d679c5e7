// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionItem.h"

#include <OxBase/DpiTool.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <WbBaseUI/ElidedLabelEx.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmapCache>
#include <QPushButton>

namespace
{

constexpr int iconLength = 13;
constexpr int sideMargin = 8;
constexpr int partSpacing = 8;

struct StateIcon
{
    int state;
    const char* normal;
    const char* hovered;
};

constexpr StateIcon stateIcons[] = {
    {AppSnapshotDevelop, ":/images/rpa/document_link.png", ":/images/rpa/document_link_hover.png"},
    {AppSnapshotGray, ":/images/rpa/version_icon_beta.png", ":/images/rpa/version_icon_beta_hover.png"},
    {AppSnapshotOnline, ":/images/rpa/version_icon_online.png", ":/images/rpa/version_icon_online_hover.png"},
};

// The scaled picture, read once and shared by all rows.
QPixmap ScaledPixmap(const QString& path, qreal pixelRatio)
{
    const int length = qRound(DpiTool::ScaleDefault(iconLength) * pixelRatio);
    const QString key = QStringLiteral("%1@%2").arg(path).arg(length);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap(path);
        if (pixmap.isNull())
            return pixmap;
        pixmap = pixmap.scaled(length, length, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

} // namespace

RpaVersionItem::RpaVersionItem(QWidget* parent) : WbBaseWidget(parent) {}

RpaVersionItem::~RpaVersionItem()
{
    if (rowLayout)
        DpiTool::Unregister(this);
}

void RpaVersionItem::SetName(const QString& value)
{
    name = value;
    if (textLabel)
        textLabel->SetText(name, QString());
}

void RpaVersionItem::SetState(int value)
{
    state = value;
    ShowIcon(false);
}

void RpaVersionItem::SetTip(const QString& value)
{
    tip = value;
    if (iconLabel)
        iconLabel->setToolTip(tip);
}

void RpaVersionItem::SetInSight(bool value)
{
    inSight = value;
    setVisible(value);
}

void RpaVersionItem::setVisible(bool visible)
{
    WbBaseWidget::setVisible(visible && inSight);
}

void RpaVersionItem::AdjustForDpi()
{
    ApplyLayoutMetrics();
    ShowIcon(false);
}

bool RpaVersionItem::event(QEvent* event)
{
    if (event->type() == QEvent::PolishRequest && !inSight) {
        // Every new widget is asked this soon after its birth; out of sight it is soon enough when it is
        // shown.
        return true;
    }
    if (event->type() == QEvent::Polish)
        EnsureBuilt();
    return WbBaseWidget::event(event);
}

void RpaVersionItem::enterEvent(QEvent* event)
{
    EnsureBuilt();
    if (!data.toString().isEmpty() && state == AppSnapshotDevelop)
        deleteButton->show();
    WbBaseWidget::enterEvent(event);
}

void RpaVersionItem::leaveEvent(QEvent* event)
{
    EnsureBuilt();
    deleteButton->hide();
    WbBaseWidget::leaveEvent(event);
}

bool RpaVersionItem::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == iconLabel) {
        if (event->type() == QEvent::Enter)
            ShowIcon(true);
        else if (event->type() == QEvent::Leave)
            ShowIcon(false);
    }
    return WbBaseWidget::eventFilter(watched, event);
}

void RpaVersionItem::SlotDelete()
{
    emit SigDelete(data);
}

void RpaVersionItem::EnsureBuilt()
{
    if (rowLayout)
        return;
    iconLabel = new QLabel(this);
    iconLabel->setObjectName(QStringLiteral("rpa_version_combo_icon"));
    iconLabel->setCursor(Qt::PointingHandCursor);
    iconLabel->installEventFilter(this);

    textLabel = new ElidedLabelEx(this);
    textLabel->setObjectName(QStringLiteral("rpa_version_combo_text"));

    deleteButton = new QPushButton(this);
    deleteButton->setObjectName(QStringLiteral("rpa_version_combo_delete"));
    deleteButton->setCursor(Qt::PointingHandCursor);
    deleteButton->setFocusPolicy(Qt::NoFocus);
    deleteButton->hide();

    rowLayout = new QHBoxLayout(this);
    rowLayout->addWidget(iconLabel);
    rowLayout->addWidget(textLabel);
    rowLayout->addWidget(deleteButton);

    ApplyLayoutMetrics();
    connect(deleteButton, &QPushButton::clicked, this, &RpaVersionItem::SlotDelete);
    DpiTool::Register(this);

    textLabel->SetText(name, QString());
    iconLabel->setToolTip(tip);
    ShowIcon(false);
}

void RpaVersionItem::ApplyLayoutMetrics()
{
    if (!rowLayout)
        return;
    textLabel->setSizePolicy(QSizePolicy::Expanding, textLabel->sizePolicy().verticalPolicy());
    const int side = DpiTool::ScaleDefault(sideMargin);
    rowLayout->setContentsMargins(side, 0, side, 0);
    rowLayout->setSpacing(DpiTool::ScaleDefault(partSpacing));
}

void RpaVersionItem::ShowIcon(bool hovered)
{
    if (!iconLabel)
        return;
    for (const StateIcon& icon : stateIcons) {
        if (icon.state == state) {
            const auto* path = hovered ? icon.hovered : icon.normal;
            iconLabel->setPixmap(ScaledPixmap(QLatin1String(path), devicePixelRatioF()));
            return;
        }
    }
    iconLabel->setPixmap(QPixmap());
}
