// SPDX-License-Identifier: Apache-2.0

#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTabBar>
#include <QTreeView>

// What an author does again and again in panels and processes, and the states that follow.

using namespace TourLook;

namespace
{
QAbstractItemView* Records(const char* panel)
{
    return qobject_cast<QAbstractItemView*>(InPanel(panel, "recordView")());
}

bool EditsWith(const char* className)
{
    const QWidget* focus = QApplication::focusWidget();
    return focus && focus->inherits(className);
}

QModelIndex StatementAt(const QTreeView* view, int line)
{
    QModelIndex index = view->model()->index(0, 1);
    for (int i = 1; i < line && index.isValid(); ++i)
        index = view->indexBelow(index).siblingAtColumn(1);
    return index;
}
} // namespace

void Tour::AddRecord(const char* panel, const QString& text)
{
    d->Click(QStringLiteral("add"), InPanel(panel, "recordAdd"));
    d->Until(QStringLiteral("a field for the name"), [] { return EditsWith("QLineEdit"); });
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(text);
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the record ") + text, [panel, text] {
        const QAbstractItemView* view = Records(panel);
        return view && view->hasFocus() && view->currentIndex().data().toString() == text;
    });
}

void Tour::WriteCell(const char* panel, int column, const QString& text)
{
    while (d->OnGui([=] { return Records(panel)->currentIndex().column(); }) < column)
        d->Key(Qt::Key_Right);
    d->Key(Qt::Key_F2);
    d->Until(QStringLiteral("a field for the text"), [] { return EditsWith("QLineEdit"); });
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(text);
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the text ") + text, [panel, text] {
        const QAbstractItemView* view = Records(panel);
        return view && view->hasFocus() && view->currentIndex().data().toString() == text;
    });
}

void Tour::ChooseCell(const char* panel, int column, const QString& title)
{
    while (d->OnGui([=] { return Records(panel)->currentIndex().column(); }) < column)
        d->Key(Qt::Key_Right);
    d->Key(Qt::Key_F2);
    d->Until(QStringLiteral("the choices"), [] { return EditsWith("QComboBox"); });
    ChooseFromCombo(title);
    d->Until(QStringLiteral("the end of the choice"), [panel] {
        const QAbstractItemView* view = Records(panel);
        return view && view->hasFocus() && !view->findChild<QComboBox*>();
    });
}

void Tour::ChooseFromCombo(const QString& title)
{
    d->Key(Qt::Key_Down, Qt::AltModifier);
    const auto list = [] {
        const QWidget* popup = QApplication::activePopupWidget();
        return popup ? popup->findChild<QAbstractItemView*>() : nullptr;
    };
    d->ClickAt(
        title, [list]() -> QWidget* { return list(); },
        [title](QWidget* widget) {
            auto* view = qobject_cast<QAbstractItemView*>(widget);
            for (int row = 0; row < view->model()->rowCount(); ++row) {
                const QModelIndex index = view->model()->index(row, 0);
                if (index.data().toString() == title) {
                    return view->viewport()->mapTo(view, view->visualRect(index).center());
                }
            }
            return QPoint(-1, -1);
        });
    d->Until(QStringLiteral("the list's end"), [] { return !QApplication::activePopupWidget(); });
}

void Tour::AddProcess(const QString& name)
{
    GoToPage("pushButtonProcess");
    d->Click(QStringLiteral("add a process"), Named("processAddButton"));
    d->Click(QStringLiteral("its name"), Named("lineEditProcessName"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(name);
    d->Click(QStringLiteral("OK"), Named("pushButtonNameOk"));
    d->Until(QStringLiteral("the process ") + name, [name] {
        auto* tabs = VisibleAs<QTabBar>("processTabBar");
        return tabs && !QApplication::activeModalWidget() &&
               tabs->tabData(tabs->currentIndex()).toString() == name;
    });
}

void Tour::GoToProcess(const QString& name)
{
    GoToPage("pushButtonProcess");
    const auto place = [name](QWidget* widget) {
        auto* tabs = qobject_cast<QTabBar*>(widget);
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabData(i).toString() == name)
                return tabs->tabRect(i).center();
        return QPoint(-1, -1);
    };
    d->ClickAt(name, Named("processTabBar"), place);
    d->Until(QStringLiteral("the process ") + name, [name] {
        auto* tabs = VisibleAs<QTabBar>("processTabBar");
        return tabs && tabs->tabData(tabs->currentIndex()).toString() == name;
    });
}

void Tour::AddStatement(const QString& title)
{
    GiveFocus("statementView");
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the search for commands"),
             [] { return Visible("lineEditQuickPick") && QApplication::activePopupWidget(); });
    d->Type(title);
    d->Until(QStringLiteral("the command ") + title, [title] {
        auto* view = VisibleAs<QListView>("quickPickView");
        return view && view->currentIndex().data().toString() == title;
    });
    d->Key(Qt::Key_Return);
    UntilStatement(title);
}

void Tour::GoToStatement(int line)
{
    d->ClickAt(QStringLiteral("statement %1").arg(line), Named("statementView"), [line](QWidget* widget) {
        auto* view = qobject_cast<QTreeView*>(widget);
        const QModelIndex index = StatementAt(view, line);
        return index.isValid() ? view->viewport()->mapTo(view, view->visualRect(index).center())
                               : QPoint(-1, -1);
    });
    d->Until(QStringLiteral("its selection"), [line] {
        auto* view = VisibleAs<QTreeView>("statementView");
        return view && view->currentIndex().siblingAtColumn(1) == StatementAt(view, line);
    });
}

void Tour::FillField(const char* argument, const QString& text)
{
    const QByteArray field = QByteArray("field_") + argument;
    bool isForm = false;
    d->OnGui([&] {
        const QWidget* editor = InPanel(field.constData(), "editor")();
        isForm = editor && editor->inherits("FormEditor");
    });
    if (isForm)
        d->Click(QStringLiteral("fx"), InPanel(field.constData(), "pythonButton"));
    d->Click(QLatin1String(argument), InPanel(field.constData(), "editor"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Key(Qt::Key_Delete);
    d->Type(text);
}

void Tour::FillOutput(const QString& name)
{
    d->Click(QStringLiteral("the output"), Named("lineEditOutput"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(name);
    d->Until(QStringLiteral("the output ") + name, [name] {
        auto* edit = VisibleAs<QLineEdit>("lineEditOutput");
        return edit && edit->text() == name;
    });
}

void Tour::PressTool(const char* text)
{
    GoToPage("pushButtonUI");
    d->Click(QString::fromUtf8(text), [text] { return ButtonWithText(text); });
}

void Tour::LetFirstToolRun(const QString& process)
{
    constexpr int processColumn = 2;
    GoToPage("pushButtonUI");
    d->ClickAt(QStringLiteral("the first tool"), InPanel("widgetToolEditor", "recordView"),
               [](QWidget* widget) {
                   auto* view = qobject_cast<QAbstractItemView*>(widget);
                   const QModelIndex first = view->model()->index(0, 0);
                   return view->viewport()->mapTo(view, view->visualRect(first).center());
               });
    ChooseCell("widgetToolEditor", processColumn, process);
}

void Tour::UntilStatement(const QString& title)
{
    d->Until(QStringLiteral("the statement ") + title, [title] {
        auto* view = VisibleAs<QTreeView>("statementView");
        const auto* shown = VisibleAs<QLabel>("labelStatementTitle");
        return view && view->currentIndex().data().toString() == title && shown && shown->text() == title;
    });
}

void Tour::UntilLog(const QString& text)
{
    d->Until(QStringLiteral("the log line ") + text, [text] {
        auto* log = VisibleAs<QAbstractItemView>("logView");
        for (int row = log ? log->model()->rowCount() - 1 : -1; row >= 0; --row)
            if (log->model()->index(row, log->model()->columnCount() - 1).data().toString().contains(text))
                return true;
        return false;
    });
}

void Tour::UntilIdle(std::chrono::milliseconds within)
{
    d->Until(
        QStringLiteral("the end of the run"),
        [] {
            const QWidget* versions = Visible("version_combo");
            const QWidget* panels = Visible("widgetToolEditor");
            return versions && versions->isEnabled() && panels && panels->isEnabled();
        },
        within);
}
