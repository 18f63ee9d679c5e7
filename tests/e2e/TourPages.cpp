// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTabBar>

// Pages of the user interface, and what an author puts on one.

using namespace TourLook;

namespace
{
QTabBar* PageTabs()
{
    return VisibleAs<QTabBar>("tabStrip");
}

QStringList PageNames()
{
    const QTabBar* tabs = PageTabs();
    QStringList names;
    for (int i = 0; tabs && i < tabs->count(); ++i)
        names.append(tabs->tabText(i));
    return names;
}

QPoint MiddleOfPage(QWidget* tabs, const QString& name)
{
    return qobject_cast<QTabBar*>(tabs)->tabRect(PageNames().indexOf(name)).center();
}
} // namespace

void Tour::NamePage(const QString& name)
{
    d->Click(QStringLiteral("the name"), Named("lineEdit"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(name);
    d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
}

void Tour::DesignPages()
{
    const QString first = QStringLiteral("发票汇总");
    const QString added = QStringLiteral("工时统计");
    const QString renamed = QStringLiteral("工时汇总");
    const QString passing = QStringLiteral("临时界面");
    d->Step(QStringLiteral("page-without-a-name"), [=] {
        GoToPage("pushButtonUI");
        d->UntilCalm();
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("add a page"), Named("buttonAddTab"));
        d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
        UntilToast(QStringLiteral("界面名称不能为空"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("page-name-in-use"), [=] {
        NamePage(first);
        UntilToast(QStringLiteral("界面名称已存在"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("page-added"), [=] {
        NamePage(added);
        d->Until(QStringLiteral("the new page"), [added] {
            return PageNames().size() == 3 && PageTabs()->currentIndex() == 2 && PageNames().last() == added;
        });
        d->UntilCalm();
    });
    d->Step(QStringLiteral("page-keeps-its-name"), [=] {
        d->ClickAt(QStringLiteral("the page"), Named("tabStrip"),
                   [added](QWidget* tabs) { return MiddleOfPage(tabs, added); });
        d->OnGui([this] { toasts->Clear(); });
        d->Key(Qt::Key_F2);
        d->Until(QStringLiteral("its name"), [added] {
            auto* name = VisibleAs<QLineEdit>("lineEdit");
            return name && name->text() == added;
        });
        d->TakePicture();
        d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
        if (!d->OnGui(
                [this, added] { return PageNames().last() == added && toasts->GetTexts().isEmpty(); })) {
            throw TourFailure(QStringLiteral("the page's own name was not accepted"));
        }
    });
    d->Step(QStringLiteral("page-renamed"), [=] {
        d->Key(Qt::Key_F2);
        NamePage(renamed);
        d->Until(QStringLiteral("the new name"),
                 [renamed] { return !QApplication::activeModalWidget() && PageNames().last() == renamed; });
    });
    d->Step(QStringLiteral("page-dragged-to-the-left"), [=] {
        d->Drag(
            QStringLiteral("the page"), Named("tabStrip"),
            [renamed](QWidget* tabs) { return MiddleOfPage(tabs, renamed); }, Named("tabStrip"),
            [first](QWidget* tabs) { return MiddleOfPage(tabs, first); },
            [renamed] { return PageNames().indexOf(renamed) == 0; });
    });
    d->Step(QStringLiteral("page-deleted"), [=] {
        d->Click(QStringLiteral("add a page"), Named("buttonAddTab"));
        NamePage(passing);
        d->Until(QStringLiteral("the new page"), [] { return PageNames().size() == 4; });
        const auto askToDelete = [=] {
            d->ClickAt(QStringLiteral("the page"), Named("tabStrip"),
                       [passing](QWidget* tabs) { return MiddleOfPage(tabs, passing); });
            d->Key(Qt::Key_Delete);
            UntilBox(QStringLiteral("确定删除“%1”吗？").arg(passing));
        };
        askToDelete();
        d->TakePicture();
        d->Click(QStringLiteral("no"), TourDriver::DialogButton(QStringLiteral("否")));
        d->Until(QStringLiteral("the page stays"),
                 [] { return !QApplication::activeModalWidget() && PageNames().size() == 4; });
        askToDelete();
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        d->Until(QStringLiteral("the page is gone"),
                 [passing] { return !QApplication::activeModalWidget() && !PageNames().contains(passing); });
    });
    d->Step(QStringLiteral("page-shown"), [=] {
        d->ClickAt(QStringLiteral("the page"), Named("tabStrip"),
                   [renamed](QWidget* tabs) { return MiddleOfPage(tabs, renamed); });
        d->Until(QStringLiteral("the page's own tool"), [] { return ButtonWithText("开始") != nullptr; });
    });
}

void Tour::DesignContent()
{
    enum ToolColumn
    {
        ToolText,
        ToolIcon,
        ToolProcess
    };
    enum ParamColumn
    {
        ParamName,
        ParamLabel,
        ParamType,
        ParamDefault
    };
    enum TableColumn
    {
        ColumnName,
        ColumnType
    };
    d->Step(QStringLiteral("page-with-a-tool"), [=] {
        AddProcess(QStringLiteral("统计工时"));
        GoToPage("pushButtonUI");
        AddRecord("widgetToolEditor", QStringLiteral("统计"));
        ChooseCell("widgetToolEditor", ToolIcon, QStringLiteral("表格"));
        ChooseCell("widgetToolEditor", ToolProcess, QStringLiteral("统计工时"));
        d->Until(QStringLiteral("the tool"), [] { return ButtonWithText("统计") != nullptr; });
    });
    d->Step(QStringLiteral("page-with-a-parameter"), [=] {
        AddRecord("widgetParamEditor", QStringLiteral("时薪"));
        WriteCell("widgetParamEditor", ParamLabel, QStringLiteral("时薪（元）"));
        ChooseCell("widgetParamEditor", ParamType, QStringLiteral("数字"));
        WriteCell("widgetParamEditor", ParamDefault, QStringLiteral("80"));
    });
    d->Step(QStringLiteral("page-with-columns"), [=] {
        AddRecord("widgetTableEditor", QStringLiteral("姓名"));
        AddRecord("widgetTableEditor", QStringLiteral("工时"));
        ChooseCell("widgetTableEditor", ColumnType, QStringLiteral("数字"));
        AddRecord("widgetTableEditor", QStringLiteral("金额"));
        ChooseCell("widgetTableEditor", ColumnType, QStringLiteral("数字"));
    });
    const auto foldAll = [this](bool fold) {
        for (const char* panel : {"widgetToolEditor", "widgetParamEditor", "widgetTableEditor"}) {
            d->Click(QLatin1String(panel), InPanel(panel, "panelTitle"));
        }
        d->Until(QStringLiteral("the panels' new place"),
                 [fold] { return (Visible("space_widget") != nullptr) == fold; });
    };
    d->Step(QStringLiteral("panels-folded"), [=] { foldAll(true); });
    d->Step(QStringLiteral("panels-unfolded"), [=] { foldAll(false); });
}
