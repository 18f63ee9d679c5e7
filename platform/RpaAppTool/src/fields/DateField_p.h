// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTimeEdit>

// A date with or without the time of day, or none yet, that is typed or picked from a calendar in the
// language and the colours of the product. Whoever begins to enter one where there is none starts from today.
class DateField : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit DateField(bool withTime = false, QWidget* parent = nullptr);

    // A QDate or a QDateTime; an invalid one shows that there is none.
    void ShowDate(const QVariant& date);
    // A QDate, or a QDateTime with the time of day; invalid for none.
    QVariant GetDate() const;

    void stepBy(int steps) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void CreateCalendar();
    bool IsNone() const { return dateTime() == minimumDateTime(); }
    bool StartFromToday();

    const bool withTime;
    bool hasCalendar = false;
};
