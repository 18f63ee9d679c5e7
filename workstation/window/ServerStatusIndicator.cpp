// SPDX-License-Identifier: Apache-2.0

#include "ServerStatusIndicator.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QPainter>

namespace
{
// Told apart by the word too, never by the colour alone.
QColor DotColor(ServerState state)
{
    switch (state) {
    case ServerState::Connected:
        return WbTheme::Instance()->Color(WbColor::SuccessText);
    case ServerState::Broken:
        return WbTheme::Instance()->Color(WbColor::DangerText);
    case ServerState::Connecting:
        break;
    }
    return WbTheme::Instance()->Color(WbColor::WarningText);
}

int Dot()
{
    return DpiTool::ScaleDefault(8);
}
} // namespace

ServerStatusIndicator::ServerStatusIndicator(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("serverMark"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    Show(ServerState::Connecting, QString());
}

void ServerStatusIndicator::Show(ServerState value, const QString& detail)
{
    state = value;
    setToolTip(detail);
    setAccessibleName(GetText());
    setAccessibleDescription(detail);
    updateGeometry();
    update();
}

QString ServerStatusIndicator::GetText() const
{
    switch (state) {
    case ServerState::Connected:
        return QStringLiteral("版本服务已连接");
    case ServerState::Broken:
        return QStringLiteral("版本服务未连接");
    case ServerState::Connecting:
        break;
    }
    return QStringLiteral("正在连接版本服务");
}

QSize ServerStatusIndicator::sizeHint() const
{
    return QSize(Dot() * 2 + fontMetrics().horizontalAdvance(GetText()) + 2, fontMetrics().height() + 4);
}

void ServerStatusIndicator::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(DotColor(state));
    painter.drawEllipse(QRect(0, (height() - Dot()) / 2, Dot(), Dot()));
    painter.setPen(WbTheme::Instance()->Color(WbColor::Text));
    painter.drawText(rect().adjusted(Dot() * 2, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, GetText());
}
