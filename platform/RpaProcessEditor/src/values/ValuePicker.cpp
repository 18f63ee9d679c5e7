// SPDX-License-Identifier: Apache-2.0

#include "ValuePicker_p.h"

#include <RpaProcessData/RpaExpression.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QCalendarWidget>
#include <QDate>
#include <QMenu>
#include <QPointer>
#include <QToolButton>
#include <QWidgetAction>

namespace
{
// "&" would be the mark of a key.
QString Title(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QMenu* AddMenu(QMenu* menu, const QString& title, bool any)
{
    QMenu* part = menu->addMenu(title);
    part->setEnabled(any);
    return part;
}

QString ColumnOf(const QString& row, const QString& column)
{
    return QStringLiteral("%1[%2]").arg(row, RpaExpression::ToPythonLiteral(column));
}
} // namespace

ValuePicker::ValuePicker(const FieldOffers& fieldOffers, const QString& title, QWidget* target)
    : QObject(target), offers(fieldOffers), what(title), widget(target)
{
}

QToolButton* ValuePicker::MakeButton()
{
    button = UIUtils::IconButton(QStringLiteral("pickButton"), QStringLiteral("variable"),
                                 QStringLiteral("插入变量、参数、列、日期或文件（Ctrl+空格）"));
    button->setAccessibleName(what + QStringLiteral("：插入变量等"));
    connect(button, &QToolButton::clicked, this, &ValuePicker::Open);
    return button;
}

void ValuePicker::Open()
{
    auto* menu = new QMenu(widget);
    menu->setObjectName(QStringLiteral("valueMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    Fill(menu);
    const QWidget* place = button ? button : widget;
    menu->popup(place->mapToGlobal(QPoint(0, place->height())));
    menu->setActiveAction(menu->actions().first());
}

void ValuePicker::Fill(QMenu* menu)
{
    for (const QString& variable : offers.variables)
        AddCode(menu, variable, variable);
    if (offers.variables.isEmpty())
        menu->addAction(QStringLiteral("还没有变量"))->setEnabled(false);
    menu->addSeparator();
    QMenu* parameters = AddMenu(menu, QStringLiteral("参数"), !offers.parameters.isEmpty());
    for (const QString& name : offers.parameters)
        AddCode(parameters, name,
                QStringLiteral("rpa.get_param(%1)").arg(RpaExpression::ToPythonLiteral(name)));
    AddColumns(menu);
    QMenu* fixed = AddMenu(menu, QStringLiteral("固定值"), true);
    AddCode(fixed, QStringLiteral("是"), QStringLiteral("True"));
    AddCode(fixed, QStringLiteral("否"), QStringLiteral("False"));
    AddCode(fixed, QStringLiteral("空值"), QStringLiteral("None"));
    AddDates(menu);
    AddFiles(menu);
}

void ValuePicker::AddCode(QMenu* menu, const QString& title, const QString& python)
{
    QAction* action = menu->addAction(Title(title));
    connect(action, &QAction::triggered, this, [this, python] {
        emit SigPicked({RpaValuePart::Kind::Code, python});
    });
}

// Columns of the row that a loop holds; where there is no loop, their names.
void ValuePicker::AddColumns(QMenu* menu)
{
    QMenu* columns = AddMenu(menu, QStringLiteral("表格列"), !offers.columns.isEmpty());
    for (const QString& row : offers.rows)
        for (const QString& column : offers.columns)
            AddCode(columns, row + QStringLiteral(" 的 ") + column, ColumnOf(row, column));
    columns->addSeparator();
    for (const QString& column : offers.columns) {
        QAction* name = columns->addAction(Title(QStringLiteral("列名 ") + column));
        connect(name, &QAction::triggered, this, [this, column] { PickText(column); });
    }
}

void ValuePicker::AddDates(QMenu* menu)
{
    QMenu* dates = AddMenu(menu, QStringLiteral("日期"), true);
    auto* calendar = new QCalendarWidget;
    calendar->setObjectName(QStringLiteral("valueCalendar"));
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    auto* action = new QWidgetAction(dates);
    action->setDefaultWidget(calendar);
    dates->addAction(action);
    const auto pick = [this, menu](const QDate& date) {
        menu->close();
        PickText(date.toString(Qt::ISODate));
    };
    connect(calendar, &QCalendarWidget::activated, this, pick); // Enter
    connect(calendar, &QCalendarWidget::clicked, this, pick);
}

void ValuePicker::AddFiles(QMenu* menu)
{
    // The menu is gone before a dialog opens over it.
    connect(
        menu->addAction(QStringLiteral("文件…")), &QAction::triggered, this, [this] { PickPath(false); },
        Qt::QueuedConnection);
    connect(
        menu->addAction(QStringLiteral("文件夹…")), &QAction::triggered, this, [this] { PickPath(true); },
        Qt::QueuedConnection);
}

void ValuePicker::PickPath(bool folder)
{
    const QPointer<ValuePicker> self(this);
    const QString path =
        folder ? WbSystemDialogs::OpenFolder(widget, what) : WbSystemDialogs::OpenFile(widget, what);
    if (self && !path.isEmpty())
        PickText(path);
}

void ValuePicker::PickText(const QString& text)
{
    emit SigPicked({RpaValuePart::Kind::Text, text});
}
