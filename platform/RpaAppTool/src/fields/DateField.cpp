// SPDX-License-Identifier: Apache-2.0

#include "DateField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QTextCharFormat>
#include <QToolButton>

namespace
{
// Room for six weeks at the theme's font; the widget itself asks for less than its rows need.
constexpr QSize calendarSize(308, 272);

void SetIcon(const QCalendarWidget* calendar, const char* button, const char* icon)
{
    if (auto* found = calendar->findChild<QToolButton*>(QLatin1String(button)))
        found->setIcon(WbIcons::Get(QLatin1String(icon)));
}
} // namespace

DateField::DateField(bool showsTime, QWidget* parent) : QDateTimeEdit(parent), withTime(showsTime)
{
    setCalendarPopup(true);
    setDisplayFormat(withTime ? QStringLiteral("yyyy-MM-dd HH:mm") : QStringLiteral("yyyy-MM-dd"));
    // Shown for the earliest date there is.
    setSpecialValueText(withTime ? QStringLiteral("请选择日期和时间") : QStringLiteral("请选择日期"));
    ShowDate(QVariant());
}

void DateField::ShowDate(const QVariant& shown)
{
    const QDateTime moment = withTime ? shown.toDateTime() : shown.toDate().startOfDay();
    setDateTime(moment.isValid() ? moment : minimumDateTime());
}

QVariant DateField::GetDate() const
{
    if (IsNone())
        return {};
    return withTime ? QVariant(dateTime()) : QVariant(date());
}

bool DateField::StartFromToday()
{
    if (!IsNone())
        return false;
    setDateTime(QDate::currentDate().startOfDay());
    return true;
}

void DateField::stepBy(int steps)
{
    if (!StartFromToday())
        QDateTimeEdit::stepBy(steps);
}

void DateField::keyPressEvent(QKeyEvent* event)
{
    const QString text = event->text();
    if (!text.isEmpty() && text.at(0).isDigit() && StartFromToday())
        setSelectedSection(QDateTimeEdit::YearSection);
    QDateTimeEdit::keyPressEvent(event);
}

// A calendar is some fifty widgets; most dates are never picked from one.
void DateField::mousePressEvent(QMouseEvent* event)
{
    if (!hasCalendar)
        CreateCalendar();
    StartFromToday();
    QTextCharFormat weekend;
    weekend.setForeground(WbTheme::Instance()->Color(WbColor::DangerText));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendarWidget()->setWeekdayTextFormat(day, weekend);
    QDateTimeEdit::mousePressEvent(event);
}

void DateField::CreateCalendar()
{
    hasCalendar = true;
    auto* calendar = new QCalendarWidget;
    calendar->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setMinimumSize(DpiTool::ScaleDefault(calendarSize.width()),
                             DpiTool::ScaleDefault(calendarSize.height()));
    calendar->setAttribute(Qt::WA_StyledBackground); // otherwise it draws no frame
    calendar->setContentsMargins(1, 1, 1, 1);
    SetIcon(calendar, "qt_calendar_prevmonth", "chevron-left");
    SetIcon(calendar, "qt_calendar_nextmonth", "chevron-right");
    setCalendarWidget(calendar); // takes it
}
