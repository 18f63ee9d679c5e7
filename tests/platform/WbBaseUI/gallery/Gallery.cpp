// SPDX-License-Identifier: Apache-2.0

#include "Gallery.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/RpaTabBar.h>
#include <WbBaseUI/WbBaseDialog.h>
#include <WbBaseUI/WbBaseWidget.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbIconButtonWidget.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbToast.h>

#include <QCheckBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{
int Px(int length)
{
    return DpiTool::ScaleDefault(length);
}

template <typename Layout>
Layout* Spaced(Layout* layout, int margin, int spacing)
{
    layout->setContentsMargins(Px(margin), Px(margin), Px(margin), Px(margin));
    layout->setSpacing(Px(spacing));
    return layout;
}

WbPushButton* Button(const QString& text, int type, QWidget* parent)
{
    auto* button = new WbPushButton(parent, type);
    button->setText(text);
    return button;
}

QWidget* Buttons()
{
    auto* page = new QWidget;
    auto* grid = Spaced(new QGridLayout(page), 24, 16);
    const QStringList kinds = {QStringLiteral("默认"), QStringLiteral("主要"), QStringLiteral("危险"),
                               QStringLiteral("次要")};
    for (int type = 0; type < kinds.size(); ++type) {
        grid->addWidget(new WbLabel(kinds.at(type), page), type, 0);
        grid->addWidget(Button(QStringLiteral("保存版本"), type, page), type, 1);
        auto* withIcon = Button(QStringLiteral("带图标"), type, page);
        const bool filled = type == Wb::PrimaryButton || type == Wb::DangerButton;
        withIcon->setIcon(
            WbIcons::Get(QStringLiteral("save"), filled ? WbColor::TextOnAccent : WbColor::TextSecondary));
        grid->addWidget(withIcon, type, 2);
        auto* disabled = Button(QStringLiteral("不可用"), type, page);
        disabled->setEnabled(false);
        grid->addWidget(disabled, type, 3);
        auto* editor = Button(QStringLiteral("编辑器"), type, page);
        editor->SetBusiness(Wb::BaseUIBusiness::Editor);
        editor->SetButtonType(type);
        grid->addWidget(editor, type, 4);
    }
    auto* focused = Button(QStringLiteral("有焦点"), Wb::PrimaryButton, page);
    grid->addWidget(focused, 4, 1);
    focused->setFocus();
    auto* checked = Button(QStringLiteral("已选中"), Wb::DefaultButton, page);
    checked->setCheckable(true);
    checked->setChecked(true);
    grid->addWidget(checked, 4, 2);
    auto* tool = new QToolButton(page);
    tool->setIcon(WbIcons::Get(QStringLiteral("settings")));
    grid->addWidget(tool, 4, 3);
    auto* toolOn = new QToolButton(page);
    toolOn->setIcon(WbIcons::Get(QStringLiteral("bold")));
    toolOn->setCheckable(true);
    toolOn->setChecked(true);
    grid->addWidget(toolOn, 4, 4);
    return page;
}

QWidget* Fields()
{
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    form->setContentsMargins(Px(24), Px(24), Px(24), Px(24));
    form->setSpacing(Px(12));
    auto* name = new WbLineEdit(page);
    name->setPlaceholderText(QStringLiteral("输入版本名称"));
    form->addRow(QStringLiteral("占位文字"), name);
    auto* text = new WbLineEdit(page);
    text->setText(QStringLiteral("发票录入助手 Invoice 2026"));
    text->selectAll();
    text->setFocus();
    form->addRow(QStringLiteral("有焦点"), text);
    auto* off = new WbLineEdit(page);
    off->setText(QStringLiteral("不可用"));
    off->setEnabled(false);
    form->addRow(QStringLiteral("不可用"), off);
    auto* combo = new WbComboBox(page);
    combo->addItems({QStringLiteral("版本1"), QStringLiteral("【灰度】版本2")});
    form->addRow(QStringLiteral("下拉框"), combo);
    auto* editable = new WbEditableCombo(page);
    editable->SetPlaceholderText(QStringLiteral("输入新版本名称或下拉选择覆盖版本"));
    form->addRow(QStringLiteral("可编辑"), editable);
    auto* comboOff = new WbComboBox(page);
    comboOff->addItem(QStringLiteral("不可用"));
    comboOff->setEnabled(false);
    form->addRow(QStringLiteral("不可用"), comboOff);
    auto* spin = new QSpinBox(page);
    spin->setSuffix(QStringLiteral(" 秒"));
    spin->setValue(30);
    form->addRow(QStringLiteral("数字"), spin);
    auto* date = new QDateEdit(QDate(2026, 11, 20), page);
    date->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    date->setCalendarPopup(true);
    form->addRow(QStringLiteral("日期"), date);
    auto* notes = new WbTextEdit(page);
    notes->setPlaceholderText(QStringLiteral("版本描述不超过50字符"));
    notes->setMaximumHeight(Px(80));
    form->addRow(QStringLiteral("多行"), notes);
    auto* error = new WbLineEdit(page);
    error->setProperty("hasError", true);
    error->setText(QStringLiteral("名称已存在"));
    form->addRow(QStringLiteral("有错误"), error);
    return page;
}

QWidget* Choices()
{
    auto* page = new QWidget;
    auto* column = Spaced(new QVBoxLayout(page), 24, 8);
    const auto box = [page](const QString& text, Qt::CheckState state, bool enabled) {
        auto* check = new QCheckBox(text, page);
        check->setTristate(state == Qt::PartiallyChecked);
        check->setCheckState(state);
        check->setEnabled(enabled);
        return check;
    };
    column->addWidget(box(QStringLiteral("未选"), Qt::Unchecked, true));
    column->addWidget(box(QStringLiteral("已选"), Qt::Checked, true));
    column->addWidget(box(QStringLiteral("部分"), Qt::PartiallyChecked, true));
    column->addWidget(box(QStringLiteral("不可用"), Qt::Checked, false));
    auto* group = new QGroupBox(QStringLiteral("运行方式"), page);
    auto* radios = new QVBoxLayout(group);
    for (const QString& name : {QStringLiteral("立即运行"), QStringLiteral("定时运行")}) {
        auto* radio = new QRadioButton(name, group);
        radio->setChecked(name.startsWith(QStringLiteral("立即")));
        radios->addWidget(radio);
    }
    column->addWidget(group);
    auto* progress = new QProgressBar(page);
    progress->setValue(62);
    column->addWidget(progress);
    auto* slider = new QSlider(Qt::Horizontal, page);
    slider->setValue(40);
    column->addWidget(slider);
    return page;
}

QWidget* Views()
{
    auto* page = new QWidget;
    auto* row = Spaced(new QHBoxLayout(page), 24, 16);
    auto* tree = new QTreeWidget(page);
    tree->setHeaderLabels({QStringLiteral("流程"), QStringLiteral("状态")});
    auto* root = new QTreeWidgetItem(tree, {QStringLiteral("主流程"), QStringLiteral("运行中")});
    root->setIcon(0, WbIcons::Get(QStringLiteral("subprocess")));
    new QTreeWidgetItem(root, {QStringLiteral("打开网页"), QStringLiteral("完成")});
    auto* current = new QTreeWidgetItem(root, {QStringLiteral("循环读取表格"), QString()});
    new QTreeWidgetItem(current, {QStringLiteral("写入单元格"), QString()});
    root->setExpanded(true);
    tree->setCurrentItem(current);
    row->addWidget(tree, 1);
    auto* table = new QTableWidget(5, 3, page);
    table->setHorizontalHeaderLabels(
        {QStringLiteral("姓名"), QStringLiteral("金额"), QStringLiteral("启用")});
    table->setAlternatingRowColors(true);
    for (int line = 0; line < table->rowCount(); ++line) {
        table->setItem(line, 0, new QTableWidgetItem(QStringLiteral("客户 %1").arg(line + 1)));
        table->setItem(line, 1, new QTableWidgetItem(QString::number(1280.5 * (line + 1))));
        auto* flag = new QTableWidgetItem(QStringLiteral("是"));
        flag->setCheckState(line % 2 ? Qt::Checked : Qt::Unchecked);
        table->setItem(line, 2, flag);
    }
    table->setCurrentCell(1, 0);
    row->addWidget(table, 1);
    auto* list = new QListWidget(page);
    for (int line = 1; line <= 30; ++line) {
        list->addItem(new QListWidgetItem(WbIcons::Get(QStringLiteral("app-visual")),
                                          QStringLiteral("应用 %1").arg(line)));
    }
    list->setCurrentRow(2);
    row->addWidget(list, 1);
    page->resize(Px(900), Px(320));
    return page;
}

QWidget* Editor()
{
    auto* page = new WbBaseWidget;
    page->setObjectName(QStringLiteral("editorWidget"));
    auto* column = Spaced(new QVBoxLayout(page), 0, 0);
    auto* top = new WbBaseWidget(page);
    top->setObjectName(QStringLiteral("widgetTop"));
    auto* bar = new QHBoxLayout(top);
    bar->setContentsMargins(Px(12), 0, Px(28), 0);
    bar->setSpacing(Px(12));
    auto* title = new QLabel(QStringLiteral("发票录入助手"), top);
    title->setObjectName(QStringLiteral("labelName"));
    bar->addWidget(title);
    bar->addStretch(1);
    auto* version = new QLabel(QStringLiteral("选择版本："), top);
    version->setObjectName(QStringLiteral("labelVersion"));
    bar->addWidget(version);
    auto* combo = new WbComboBox(top);
    combo->setObjectName(QStringLiteral("version_combo"));
    combo->addItem(QStringLiteral("【线上】三月版"));
    combo->setMinimumWidth(Px(150));
    bar->addWidget(combo);
    const QVector<QPair<QString, QString>> buttons = {
        {QStringLiteral("pushButtonSave"), QStringLiteral("保存")},
        {QStringLiteral("pushButtonSaveAs"), QStringLiteral("另存为")},
        {QStringLiteral("pushButtonBeta"), QStringLiteral("灰度")},
        {QStringLiteral("pushButtonPublish"), QStringLiteral("上线")},
        {QStringLiteral("pushButtonExportAppData"), QStringLiteral("生成模板")}};
    for (const auto& entry : buttons) {
        auto* button = new WbPushButton(top, Wb::SecondaryButton, Wb::BaseUIBusiness::Editor);
        button->setObjectName(entry.first);
        button->setText(entry.second);
        bar->addWidget(button);
    }
    column->addWidget(top);
    auto* line = new QFrame(page);
    line->setObjectName(QStringLiteral("lineHori"));
    line->setFrameShape(QFrame::HLine);
    column->addWidget(line);
    auto* navigation = new QWidget(page);
    navigation->setProperty("wbRole", QStringLiteral("toolbar"));
    auto* tabs = new QHBoxLayout(navigation);
    tabs->setContentsMargins(Px(28), 0, Px(28), 0);
    tabs->setSpacing(Px(28));
    for (const QString& name :
         {QStringLiteral("界面设计"), QStringLiteral("流程设计"), QStringLiteral("使用说明设计")}) {
        auto* button = new WbIconButtonWidget(navigation);
        button->GetLabelText()->setText(name);
        button->bSelected = name.startsWith(QStringLiteral("流程"));
        button->UpdateStyle();
        tabs->addWidget(button);
    }
    tabs->addStretch(1);
    column->addWidget(navigation);
    column->addStretch(1);
    auto* pages = new RpaTabBar(page);
    pages->Initialize({QStringLiteral("开始"), QStringLiteral("登录信息"), QStringLiteral("结果表")});
    column->addWidget(pages);
    page->resize(Px(1120), Px(360));
    return page;
}

QWidget* Status(RequestStatus status)
{
    auto* page = new QWidget;
    auto* column = Spaced(new QVBoxLayout(page), 0, 0);
    auto* overlay = new RequestStatusBaseWidget(page);
    column->addWidget(overlay);
    overlay->SetErrorMsg(QStringLiteral("连接服务器超时（10 秒），请检查网络后重试。"));
    overlay->SetStatus(status);
    page->resize(Px(560), Px(320));
    return page;
}

QWidget* Dialog()
{
    auto* dialog = new WbBaseDialog(nullptr, Qt::WindowCloseButtonHint, 1, true);
    dialog->SetTitle(QStringLiteral("另存为"));
    QWidget* content = dialog->GetContentWidget();
    auto* column = Spaced(new QVBoxLayout(content), 24, 16);
    auto* form = new QFormLayout;
    form->setSpacing(Px(12));
    form->addRow(QStringLiteral("当前版本："), new WbLabel(QStringLiteral("【灰度】二月版"), content));
    auto* name = new WbEditableCombo(content);
    name->SetBusinessStyle(1);
    name->SetPlaceholderText(QStringLiteral("输入新版本名称或下拉选择覆盖版本"));
    form->addRow(QStringLiteral("版本名称："), name);
    auto* notes = new WbTextEdit(content);
    notes->setPlaceholderText(QStringLiteral("版本描述不超过50字符"));
    form->addRow(QStringLiteral("版本描述："), notes);
    column->addLayout(form, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(Px(12));
    row->addStretch(1);
    row->addWidget(Button(QStringLiteral("确定"), Wb::PrimaryButton, content));
    row->addWidget(Button(QStringLiteral("取消"), Wb::SecondaryButton, content));
    column->addLayout(row);
    content->resize(Px(528), Px(420));
    return dialog;
}

QWidget* Icons()
{
    auto* page = new QWidget;
    auto* grid = Spaced(new QGridLayout(page), 16, 12);
    constexpr int columns = 20;
    int place = 0;
    const QStringList names = WbIcons::Names();
    for (const QString& name : names) {
        auto* label = new QLabel(page);
        label->setPixmap(WbIcons::Get(name).pixmap(Px(24), Px(24)));
        label->setToolTip(name);
        grid->addWidget(label, place / columns, place % columns);
        ++place;
    }
    for (const QString& name : {QStringLiteral("document_link"), QStringLiteral("version_icon_beta"),
                                QStringLiteral("version_icon_online")}) {
        for (const QString& suffix : {QString(), QStringLiteral("_hover")}) {
            auto* label = new QLabel(page);
            const QPixmap picture(QStringLiteral(":/images/rpa/%1%2.png").arg(name, suffix));
            label->setPixmap(picture.scaled(Px(13), Px(13), Qt::KeepAspectRatio, Qt::SmoothTransformation));
            grid->addWidget(label, place / columns, place % columns);
            ++place;
        }
    }
    return page;
}

QWidget* Menu()
{
    auto* menu = new QMenu;
    menu->addAction(WbIcons::Get(QStringLiteral("undo")), QStringLiteral("撤销\tCtrl+Z"));
    menu->addAction(WbIcons::Get(QStringLiteral("redo")), QStringLiteral("重做\tCtrl+Y"))->setEnabled(false);
    menu->addSeparator();
    QAction* check = menu->addAction(QStringLiteral("自动换行"));
    check->setCheckable(true);
    check->setChecked(true);
    menu->addMenu(QStringLiteral("更多"))->addAction(QStringLiteral("…"));
    menu->setActiveAction(menu->actions().constFirst());
    return menu;
}

QWidget* Toasts()
{
    auto* page = new QWidget;
    page->resize(Px(640), Px(320));
    page->show();
    WbToast::Show(QStringLiteral("保存成功"), ToastSuccess);
    WbToast::Show(QStringLiteral("界面名称已存在"), ToastWarning);
    WbToast::Show(
        QStringLiteral(
            "保存失败：该版本已被其他人修改，您的修改已保留在本机草稿中，请刷新后重试，或另存为新版本。"),
        ToastError);
    WbToast::Show(QStringLiteral("已切换到深色主题"), ToastInformation);
    return page;
}

QWidget* Roles()
{
    auto* page = new QWidget;
    page->setProperty("wbRole", QStringLiteral("card"));
    auto* column = Spaced(new QVBoxLayout(page), 24, 8);
    for (const char* role : {"title", "heading", "secondary", "caption", "error", "badge-develop",
                             "badge-gray", "badge-online"}) {
        auto* label = new QLabel(QStringLiteral("文字样式 %1").arg(QLatin1String(role)), page);
        label->setProperty("wbRole", QLatin1String(role));
        column->addWidget(label, 0, Qt::AlignLeft);
    }
    auto* elided = new ElidedLabelEx(page);
    elided->SetText(QStringLiteral("一个很长很长很长很长的版本名称放不下"), QStringLiteral("12-31"));
    elided->setFixedWidth(Px(200));
    column->addWidget(elided);
    auto* tabs = new QTabWidget(page);
    tabs->addTab(new QWidget, QStringLiteral("日志"));
    tabs->addTab(new QWidget, QStringLiteral("变量"));
    tabs->addTab(new QWidget, QStringLiteral("断点"));
    tabs->setMinimumHeight(Px(90));
    column->addWidget(tabs);
    return page;
}
} // namespace

QVector<GalleryPage> GalleryPages()
{
    return {{QStringLiteral("buttons"), &Buttons},
            {QStringLiteral("fields"), &Fields},
            {QStringLiteral("choices"), &Choices},
            {QStringLiteral("views"), &Views},
            {QStringLiteral("editor"), &Editor},
            {QStringLiteral("loading"), [] { return Status(RequestStatus::Loading); }},
            {QStringLiteral("failed"), [] { return Status(RequestStatus::Failed); }},
            {QStringLiteral("dialog"), &Dialog},
            {QStringLiteral("icons"), &Icons},
            {QStringLiteral("menu"), &Menu},
            {QStringLiteral("toasts"), &Toasts},
            {QStringLiteral("roles"), &Roles}};
}
