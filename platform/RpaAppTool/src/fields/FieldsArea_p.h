// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QScrollArea>

// Scrolls what it holds, but asks for just the height that its content has now, so that what stands below
// gets the rest.
class FieldsArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit FieldsArea(QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
