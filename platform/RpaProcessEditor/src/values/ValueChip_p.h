// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTextFormat>
#include <QTextObjectInterface>

// Paints a piece of Python inside a text.
class ValueChip : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    static constexpr int objectType = QTextFormat::UserObject + 1;
    static constexpr int pythonProperty = QTextFormat::UserProperty + 1;

    explicit ValueChip(QObject* parent) : QObject(parent) {}

    static void Paint(QPainter& painter, const QRectF& rect, const QString& label);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                    const QTextFormat& format) override;
};
