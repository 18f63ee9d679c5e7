#pragma once

#include <QDateEdit>

// A date that is typed or picked from a calendar in the language and the colours of the product.
class DateField : public QDateEdit
{
    Q_OBJECT

public:
    explicit DateField(QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void CreateCalendar();

    bool hasCalendar = false;
};
