// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTreeView>

// A visual process, built by mouse and by keys, and what is refused before it runs.

using namespace TourLook;

namespace
{
QString WorkingHoursFile()
{
    QString path = QDir::home().filePath(QStringLiteral("工时.csv"));
    QFile file(path);
    const QByteArray text = QByteArrayLiteral("姓名,工时\r\n张伟,6\r\n李娜,7.5\r\n王芳,8\r\n");
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw TourFailure(QStringLiteral("cannot write %1").arg(path));
    return path;
}

QModelIndex CommandRow(const QAbstractItemView* palette, const QString& title)
{
    for (int row = 0; row < palette->model()->rowCount(); ++row) {
        const QModelIndex index = palette->model()->index(row, 0);
        if (index.data().toString() == title)
            return index;
    }
    return {};
}

int StatementCount()
{
    auto* view = VisibleAs<QTreeView>("statementView");
    int count = 0;
    for (QModelIndex index = view ? view->model()->index(0, 0) : QModelIndex(); index.isValid();
         index = view->indexBelow(index))
        ++count;
    return count;
}

QString PathField()
{
    auto* edit = qobject_cast<QLineEdit*>(InPanel("field_path", "editor")());
    return edit ? edit->text() : QString();
}
} // namespace

void Tour::BuildProcess()
{
    d->Step(QStringLiteral("statement-dragged"), [this] {
        GoToProcess(QStringLiteral("统计工时"));
        d->Click(QStringLiteral("the palette's search"), Named("lineEditCommandSearch"));
        d->Type(QStringLiteral("CSV"));
        const QString title = QStringLiteral("读取 CSV");
        d->Drag(
            title, Named("commandListView"),
            [title](QWidget* widget) {
                auto* palette = qobject_cast<QAbstractItemView*>(widget);
                return palette->viewport()->mapTo(palette,
                                                  palette->visualRect(CommandRow(palette, title)).center());
            },
            Named("statementView"), [](QWidget* view) { return view->rect().center(); },
            &TourDriver::MayDrop);
        UntilStatement(title);
    });
    d->Step(QStringLiteral("statement-filled-in"), [this] {
        FillField("path", WorkingHoursFile());
        FillOutput(QStringLiteral("工时行"));
    });
    d->Step(QStringLiteral("statement-found-by-typing"), [this] {
        GiveFocus("statementView");
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the search for commands"), [] { return Visible("lineEditQuickPick"); });
        d->Type(QStringLiteral("循环列表"));
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the search's end"), [] { return !QApplication::activePopupWidget(); });
    });
    d->Step(QStringLiteral("process-built"), [this] {
        AddStatement(QStringLiteral("读取参数"));
        FillField("name", QStringLiteral("时薪"));
        FillOutput(QStringLiteral("时薪"));
        AddStatement(QStringLiteral("循环列表"));
        FillField("list", QStringLiteral("工时行[1:]"));
        FillOutput(QStringLiteral("人"));
        AddStatement(QStringLiteral("计算"));
        FillField("formula", QStringLiteral("float(人[1]) * 时薪"));
        FillOutput(QStringLiteral("金额"));
        AddStatement(QStringLiteral("表格添加一行"));
        FillField("values", QStringLiteral("[人[0], float(人[1]), 金额]"));
        AddStatement(QStringLiteral("输出日志"));
        // An "=" typed first turns the text into an expression.
        FillField("text", QStringLiteral("="));
        d->Type(QStringLiteral("\"登记 \" + 人[0]"));
        AddStatement(QStringLiteral("输出日志"));
        FillField("text", QStringLiteral("="));
        d->Type(QStringLiteral("\"共 \" + str(len(工时行) - 1) + \" 人\""));
        GiveFocus("statementView");
        d->Key(Qt::Key_Down, Qt::AltModifier);
        d->Until(QStringLiteral("the last line behind the loop"), [] {
            auto* view = VisibleAs<QTreeView>("statementView");
            return StatementCount() == 7 && !view->currentIndex().parent().isValid();
        });
    });
}

void Tour::MeetRefusals()
{
    const QString process = QStringLiteral("统计工时");
    const auto shownAt = [](const QString& part) {
        return [part] {
            auto* view = VisibleAs<QTreeView>("statementView");
            return view && view->currentIndex().data(Qt::AccessibleTextRole).toString().contains(part);
        };
    };
    d->Step(QStringLiteral("refusal-reference-to-a-comment"), [=] {
        GoToStatement(1);
        d->Key(Qt::Key_Slash, Qt::ControlModifier);
        d->Until(QStringLiteral("the comment"), shownAt(QStringLiteral("已注释")));
        d->OnGui([this] { toasts->Clear(); });
        PressTool("统计");
        UntilToast(QStringLiteral("节点数据引用异常，引用了已经注释的节点，详细信息在可视化页面中查看!"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("refusal-reference-to-a-comment-shown"), [=] {
        d->UntilCalm();
        GoToProcess(process);
        d->Until(QStringLiteral("the findings"), [] { return Visible("problemList") != nullptr; });
        d->TakePicture();
        GoToStatement(1);
        d->Key(Qt::Key_Slash, Qt::ControlModifier);
        d->Until(QStringLiteral("no comment"), [shownAt] { return !shownAt(QStringLiteral("已注释"))(); });
    });
    d->Step(QStringLiteral("refusal-missing-argument"), [=] {
        FillField("path", QString());
        d->OnGui([this] { toasts->Clear(); });
        PressTool("统计");
        UntilToast(QStringLiteral("节点数据异常，异常信息在【运行日志】或可视化页面中查看!"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("refusal-missing-argument-shown"), [=] {
        d->UntilCalm();
        GoToProcess(process);
        GoToStatement(3);
        d->ClickAt(QStringLiteral("the finding"), Named("problemList"), [](QWidget* widget) {
            auto* list = qobject_cast<QAbstractItemView*>(widget);
            return list->viewport()->mapTo(list, list->visualRect(list->model()->index(0, 0)).center());
        });
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the statement of the finding"), shownAt(QStringLiteral("有问题")));
        d->TakePicture();
        d->Key(Qt::Key_Z, Qt::ControlModifier);
        d->Until(QStringLiteral("the file again"),
                 [] { return PathField().endsWith(QLatin1String(".csv")); });
    });
}
