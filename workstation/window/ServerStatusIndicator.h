// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ServerState.h"

#include <QWidget>

// A dot and a word that say how the workstation stands with its version server.
class ServerStatusIndicator : public QWidget
{
    Q_OBJECT

public:
    explicit ServerStatusIndicator(QWidget* parent = nullptr);

    // detail: where the server is, or what is wrong; shown as tool tip.
    void Show(ServerState state, const QString& detail);

    ServerState GetState() const { return state; }
    QString GetText() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ServerState state = ServerState::Connecting;
};
