#pragma once

#include <QDateEdit>

// A date, or none yet, that is typed or picked from a calendar in the language and the colours of the
// product. Whoever begins to enter one where there is none starts from today.
class DateField : public QDateEdit
{
    Q_OBJECT

public:
    explicit DateField(QWidget* parent = nullptr);

    // An invalid date shows that there is none.
    void ShowDate(const QDate& date);
    bool IsNone() const { return date() == minimumDate(); }

    void stepBy(int steps) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void CreateCalendar();
    bool StartFromToday();

    bool hasCalendar = false;
};
