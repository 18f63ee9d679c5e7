// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>

// Runs of what the author built: one that succeeds, one that is stopped, one that fails.

using namespace TourLook;

namespace
{
QStringList TableRow(int row)
{
    auto* table = VisibleAs<QAbstractItemView>("tableView");
    QStringList cells;
    for (int column = 0; table && column < table->model()->columnCount(); ++column)
        cells.append(table->model()->index(row, column).data().toString());
    return cells;
}

bool IsOffDuringRun(const char* objectName)
{
    const QWidget* widget = Visible(objectName);
    return widget && !widget->isEnabled();
}
} // namespace

void Tour::RunProcesses()
{
    d->Step(QStringLiteral("run-fills-the-table"), [this] {
        PressTool("统计");
        UntilLog(QStringLiteral("共 3 人"));
        UntilIdle(std::chrono::seconds(10));
        d->Until(QStringLiteral("the rows"), [] {
            auto* table = VisibleAs<QAbstractItemView>("tableView");
            return table && table->model()->rowCount() == 3;
        });
        const QStringList row = d->OnGui([] { return TableRow(1); });
        if (row != QStringList{QStringLiteral("李娜"), QStringLiteral("7.5"), QStringLiteral("600")})
            throw TourFailure(QStringLiteral("the second row reads ") + row.join(QLatin1Char('|')));
        UntilLog(QStringLiteral("登记 王芳"));
    });
    d->Step(QStringLiteral("run-locks-what-it-needs"), [this] {
        AddProcess(QStringLiteral("忙碌循环"));
        AddStatement(QStringLiteral("条件循环"));
        d->Click(QStringLiteral("the condition's value"), InPanel("field_condition", "leftValue"));
        d->Type(QStringLiteral("1"));
        d->Click(QStringLiteral("what it is compared with"), InPanel("field_condition", "rightValue"));
        d->Type(QStringLiteral("1"));
        d->Until(QStringLiteral("a complete condition"), [] {
            const QWidget* problem = InPanel("field_condition", "labelProblem")();
            return !problem || !problem->isVisible();
        });
        d->TakePicture();
        AddStatement(QStringLiteral("设置数值"));
        LetFirstToolRun(QStringLiteral("忙碌循环"));
        PressTool("开始");
        d->Until(QStringLiteral("what is off during a run"), [] {
            return IsOffDuringRun("version_combo") && IsOffDuringRun("widgetToolEditor") &&
                   IsOffDuringRun("widgetParamEditor") && IsOffDuringRun("widgetTableEditor") &&
                   IsOffDuringRun("widgetTabBar");
        });
        UntilLog(QStringLiteral("开始运行流程“忙碌循环”"));
        d->Until(QStringLiteral("the way to stop"), [] { return ButtonWithText("停止") != nullptr; });
    });
    d->Step(QStringLiteral("run-stopped"), [this] {
        d->Click(QStringLiteral("stop"), [] { return ButtonWithText("停止"); });
        UntilIdle(std::chrono::seconds(1));
        UntilLog(QStringLiteral("流程“忙碌循环”已停止"));
    });
    d->Step(QStringLiteral("run-fails"), [this] {
        GoToProcess(QStringLiteral("统计工时"));
        GoToStatement(1);
        FillField("path", QStringLiteral("/没有/这个文件.csv"));
        PressTool("统计");
        UntilLog(QStringLiteral("流程“统计工时”运行失败"));
        UntilIdle(std::chrono::seconds(10));
    });
    d->Step(QStringLiteral("log-takes-the-page"), [this] {
        d->Click(QStringLiteral("the whole page for the log"), Named("logEnlarge"));
        d->Until(QStringLiteral("the large log"), [] { return Visible("logCover") != nullptr; });
        d->TakePicture();
        d->Click(QStringLiteral("the way back"), Named("logEnlarge"));
        d->Until(QStringLiteral("the page"), [] { return Visible("logCover") == nullptr; });
    });
    d->Step(QStringLiteral("run-fails-marks-its-statement"), [this] {
        GoToProcess(QStringLiteral("统计工时"));
        d->Until(QStringLiteral("the mark"), [] {
            auto* view = VisibleAs<QTreeView>("statementView");
            return view && Visible("problemList") &&
                   view->model()
                       ->index(0, 1)
                       .data(Qt::AccessibleTextRole)
                       .toString()
                       .contains(QStringLiteral("有问题"));
        });
        d->TakePicture();
        GiveFocus("statementView");
        d->Key(Qt::Key_Z, Qt::ControlModifier);
        d->Until(QStringLiteral("no mark, the path being what it was"),
                 [] { return Visible("problemList") == nullptr; });
    });
    d->Step(QStringLiteral("work-saved"), [this] {
        GoToPage("pushButtonUI");
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
    });
}

void Tour::SeeRunHistory()
{
    const auto results = [] {
        const auto* runs = VisibleAs<QTreeView>("viewRuns");
        QStringList texts;
        for (int row = 0; runs && row < runs->model()->rowCount(); ++row)
            texts.append(runs->model()->index(row, 2).data().toString());
        return texts;
    };
    d->Step(QStringLiteral("run-history"), [this, results] {
        d->Click(QStringLiteral("the runs"), Named("buttonRuns"));
        d->Until(QStringLiteral("the three runs"), [results] {
            return results().mid(0, 3) ==
                   QStringList{QStringLiteral("失败"), QStringLiteral("已停止"), QStringLiteral("成功")};
        });
        d->Until(QStringLiteral("why the last one failed"), [] {
            const auto* result = VisibleAs<QLabel>("labelResult");
            return result && result->text().contains(QStringLiteral("失败："));
        });
        d->TakePicture();
    });
    d->Step(QStringLiteral("run-history-filtered"), [this, results] {
        d->Click(QStringLiteral("the text that runs are found by"), Named("editText"));
        d->Type(QStringLiteral("登记 王芳"));
        d->Until(QStringLiteral("the run that wrote it"),
                 [results] { return results() == QStringList{QStringLiteral("成功")}; });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return Visible("viewRuns") == nullptr; });
    });
}
