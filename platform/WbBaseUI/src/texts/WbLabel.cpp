// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbLabel.h>

WbLabel::WbLabel(QWidget* parent) : WbLabel(QString(), parent) {}

WbLabel::WbLabel(const QString& text, QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setText(text);
}
