// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTabBar>

// Templates: what an author makes of an app, and what new apps start from.

using namespace TourLook;

namespace
{
const QString templateName = QStringLiteral("工时统计模板");
const QString templateText = QStringLiteral("按时薪和工时算出每个人的金额，结果写进表格。");

QStringList OfferedTemplates()
{
    const auto* combo = VisibleAs<QComboBox>("comboBox");
    QStringList names;
    for (int i = 0; combo && i < combo->count(); ++i)
        names.append(combo->itemText(i));
    return names;
}

bool Describes(const QString& text)
{
    const auto* label = VisibleAs<QLabel>("descLabel");
    return label && label->text() == text;
}

bool HasProcess(const QString& name)
{
    const auto* tabs = VisibleAs<QTabBar>("processTabBar");
    for (int i = 0; tabs && i < tabs->count(); ++i)
        if (tabs->tabData(i).toString() == name)
            return true;
    return false;
}

bool IsInCode(const QString& text)
{
    const QWidget* page = Visible("pageProcess");
    const auto edits = page ? page->findChildren<QPlainTextEdit*>() : QList<QPlainTextEdit*>();
    return std::any_of(edits.begin(), edits.end(), [&](const QPlainTextEdit* edit) {
        return edit->isVisible() && edit->toPlainText().contains(text);
    });
}
} // namespace

void Tour::ExportTemplate()
{
    d->Step(QStringLiteral("template-export"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("make a template"), Named("pushButtonExportAppData"));
        LetDataGoAlong();
        d->Until(QStringLiteral("the dialog"), [] { return Visible("nameLineEdit") != nullptr; });
    });
    SeeInTheDark(QStringLiteral("template-export-dark"));
    d->Step(QStringLiteral("template-export-refused"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilToast(QStringLiteral("模板名称不能为空"));
        // By key: a click would wait for the notices above to go.
        GiveFocus("nameLineEdit");
        d->Type(templateName);
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilToast(QStringLiteral("模板描述不能为空"));
        GiveFocus("directionLineEdit");
        d->Type(templateText);
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilToast(QStringLiteral("存储路径不能为空"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("template-export-folder"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("open"), Named("openPushButton"));
        d->Until(QStringLiteral("the folders"), [] {
            const QWidget* name = Visible("fileNameEdit");
            return name && name->hasFocus();
        });
        // Not where the workstation keeps its own; it is offered all the same.
        const QString folder = QDir::home().filePath(QStringLiteral("我的模板"));
        QDir().mkpath(folder);
        d->Type(folder);
        d->Until(QStringLiteral("the typed folder"), [folder] {
            const auto* edit = Anywhere<QLineEdit>("fileNameEdit");
            return edit && edit->text() == folder;
        });
        d->TakePicture();
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the folder in the dialog"), [folder] {
            const auto* path = VisibleAs<QLineEdit>("saveFileLineEdit");
            return path && path->text() == folder;
        });
    });
    d->Step(QStringLiteral("template-exported"), [this] {
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilToast(QStringLiteral("生成模板成功"));
        d->TakePicture();
    });
}

void Tour::CreateApp(const char* button, const QString& name)
{
    d->Click(QLatin1String(button), Named(button));
    d->Click(QStringLiteral("its name"), Named("editAppName"));
    d->Type(name);
    d->Key(Qt::Key_Return);
}

void Tour::PressCard(const char* list, const QString& name)
{
    d->ClickAt(name, Named(list), [list, name](QWidget* widget) {
        auto* cards = qobject_cast<QListView*>(widget);
        const QModelIndex card = CardNamed(list, name);
        return card.isValid() ? cards->viewport()->mapTo(cards, cards->visualRect(card).center())
                              : QPoint(-1, -1);
    });
}

void Tour::UntilTemplates(const QStringList& names)
{
    d->Until(QStringLiteral("the templates ") + names.join(QLatin1Char(' ')),
             [names] { return OfferedTemplates() == names; });
}

void Tour::StartFromShippedTemplate()
{
    const QString name = QStringLiteral("每周报表");
    d->Step(QStringLiteral("templates-of-program-apps"), [=] {
        CreateApp("buttonNewProgram", name); // which opens by itself
        UntilTemplates({QStringLiteral("CSV 报表"), QStringLiteral("Excel 工作簿合并"),
                        QStringLiteral("HTTP 数据抓取")});
    });
    d->Step(QStringLiteral("app-from-a-shipped-template"), [=] {
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilCurrent(QStringLiteral("版本1"));
        GoToPage("pushButtonProcess");
        d->Until(QStringLiteral("the template's code"),
                 [] { return IsInCode(QStringLiteral("import csv")); });
        d->TakePicture();
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        UntilBox(QStringLiteral("应用已经修改，是否保存？"));
        d->Click(QStringLiteral("no"), TourDriver::DialogButton(QStringLiteral("否")));
        d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
    });
}

void Tour::StartFromOwnTemplate()
{
    d->Step(QStringLiteral("templates-of-visual-apps"), [=] {
        CreateApp("buttonNewVisual", releasedApp);
        UntilTemplates({QStringLiteral("CSV 分组汇总"), templateName, QStringLiteral("文件批量改名"),
                        QStringLiteral("网页表单填写")});
        GiveFocus("comboBox");
        // The dialog may be on the screen before it is the active window.
        d->Until(QStringLiteral("the keyboard in the list of templates"), [] {
            const QWidget* templates = Visible("comboBox");
            return templates && templates->hasFocus();
        });
        ChooseFromCombo(templateName);
        d->Until(QStringLiteral("its description"), [] { return Describes(templateText); });
    });
    SeeInTheDark(QStringLiteral("templates-of-visual-apps-dark"));
    d->Step(QStringLiteral("app-from-an-own-template"), [this] {
        d->Click(QStringLiteral("OK"), Named("confirmBtn"));
        UntilCurrent(QStringLiteral("版本1"));
        d->Until(QStringLiteral("the pages of the template"), [] {
            return TabTexts("tabStrip").value(0) == QStringLiteral("工时汇总") && ButtonWithText("统计");
        });
        d->TakePicture();
        GoToPage("pushButtonProcess");
        d->Until(QStringLiteral("the process of the template"),
                 [] { return HasProcess(QStringLiteral("统计工时")); });
    });
}
