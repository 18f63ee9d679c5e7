// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QLabel>
#include <QStaticText>

// A one-line label that elides its text to fit; the full text is its tool tip while it is elided. A second
// text, when not empty, stands at the right end and is never elided.
class WBBASEUI_EXPORT ElidedLabelEx : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabelEx(QWidget* parent = nullptr);

    // Plain text; both texts as they were set, not as they are elided.
    void SetText(const QString& text, const QString& second = QString());
    QString GetText() const { return firstText; }
    QString GetSecondText() const { return secondText; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int FirstTextWidth() const;
    void ForgetMeasures();
    void LayOut(int room);
    void UpdateToolTip();

    QString firstText;
    QString secondText;
    QStaticText laidOut;
    int laidOutRoom = -1; // the width that laidOut was made for
    mutable int firstTextWidth = -1;
};
