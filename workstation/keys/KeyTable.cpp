// SPDX-License-Identifier: Apache-2.0

#include "KeyTable.h"

#include <algorithm>

namespace
{
QVector<KeyRow> General()
{
    const QString group = QStringLiteral("工作站");
    return {
        {KeyAct::ShowPalette,
         KeyPlace::Everywhere,
         group,
         QStringLiteral("命令面板"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_P}},
        {KeyAct::ShowGuide, KeyPlace::Everywhere, group, QStringLiteral("使用指南"), {Qt::Key_F1}},
        {KeyAct::ShowKeys,
         KeyPlace::Everywhere,
         group,
         QStringLiteral("快捷键一览"),
         {Qt::Key_Question, Qt::CTRL + Qt::Key_F1}},
        {KeyAct::Back, KeyPlace::Everywhere, group, QStringLiteral("返回"), {Qt::CTRL + Qt::Key_W}},
        {KeyAct::Settings, KeyPlace::Everywhere, group, QStringLiteral("设置"), {Qt::CTRL + Qt::Key_Comma}},
    };
}

QVector<KeyRow> Lists()
{
    const QString group = QStringLiteral("应用列表");
    return {
        {KeyAct::ListMine, KeyPlace::Lists, group, QStringLiteral("我的应用"), {Qt::CTRL + Qt::Key_1}},
        {KeyAct::ListOnline, KeyPlace::Lists, group, QStringLiteral("线上应用"), {Qt::CTRL + Qt::Key_2}},
        {KeyAct::ListGray, KeyPlace::Lists, group, QStringLiteral("灰度应用"), {Qt::CTRL + Qt::Key_3}},
        {KeyAct::ListNext,
         KeyPlace::Lists,
         group,
         QStringLiteral("下一个列表"),
         {Qt::CTRL + Qt::Key_PageDown}},
        {KeyAct::ListPrevious,
         KeyPlace::Lists,
         group,
         QStringLiteral("上一个列表"),
         {Qt::CTRL + Qt::Key_PageUp}},
        {KeyAct::NewVisual, KeyPlace::Lists, group, QStringLiteral("新建可视化应用"), {Qt::CTRL + Qt::Key_N}},
        {KeyAct::NewProgram,
         KeyPlace::Lists,
         group,
         QStringLiteral("新建编程应用"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_N}},
        {KeyAct::SearchApps, KeyPlace::Lists, group, QStringLiteral("搜索应用"), {Qt::CTRL + Qt::Key_F}},
        {KeyAct::RefreshApps, KeyPlace::Lists, group, QStringLiteral("刷新应用列表"), {Qt::Key_F5}},
    };
}

QVector<KeyRow> Editor()
{
    const QString group = QStringLiteral("编辑应用");
    return {
        {KeyAct::PageUI, KeyPlace::Editor, group, QStringLiteral("界面设计"), {Qt::CTRL + Qt::Key_1}},
        {KeyAct::PageProcess, KeyPlace::Editor, group, QStringLiteral("流程设计"), {Qt::CTRL + Qt::Key_2}},
        {KeyAct::PageUsage, KeyPlace::Editor, group, QStringLiteral("使用说明设计"), {Qt::CTRL + Qt::Key_3}},
        {KeyAct::PageNext, KeyPlace::Editor, group, QStringLiteral("下一页"), {Qt::CTRL + Qt::Key_PageDown}},
        {KeyAct::PagePrevious,
         KeyPlace::Editor,
         group,
         QStringLiteral("上一页"),
         {Qt::CTRL + Qt::Key_PageUp}},
        {KeyAct::Save, KeyPlace::Editor, group, QStringLiteral("保存"), {Qt::CTRL + Qt::Key_S}},
        {KeyAct::SaveAs,
         KeyPlace::Editor,
         group,
         QStringLiteral("另存为"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_S}},
        {KeyAct::Undo, KeyPlace::Editor, group, QStringLiteral("撤销"), {Qt::CTRL + Qt::Key_Z}},
        {KeyAct::Redo,
         KeyPlace::Editor,
         group,
         QStringLiteral("重做"),
         {Qt::CTRL + Qt::Key_Y, Qt::CTRL + Qt::SHIFT + Qt::Key_Z}},
        {KeyAct::Run, KeyPlace::Editor | KeyPlace::Run, group, QStringLiteral("运行"), {Qt::Key_F5}},
        {KeyAct::Stop,
         KeyPlace::Editor | KeyPlace::Run,
         group,
         QStringLiteral("停止"),
         {Qt::SHIFT + Qt::Key_F5}},
        {KeyAct::Gray, KeyPlace::Editor, group, QStringLiteral("灰度"), {Qt::CTRL + Qt::SHIFT + Qt::Key_G}},
        {KeyAct::Publish,
         KeyPlace::Editor,
         group,
         QStringLiteral("上线"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_O}},
        {KeyAct::ExportTemplate, KeyPlace::Editor, group, QStringLiteral("生成模板"), {}},
        {KeyAct::ChooseVersion,
         KeyPlace::Editor,
         group,
         QStringLiteral("选择版本"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_L}},
        {KeyAct::ShowVersions,
         KeyPlace::Editor,
         group,
         QStringLiteral("版本详情"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_I}},
        {KeyAct::ShowRuns,
         KeyPlace::Editor,
         group,
         QStringLiteral("运行记录"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_H}},
        {KeyAct::FoldBrowser,
         KeyPlace::Editor,
         group,
         QStringLiteral("折叠 / 展开浏览器窗口"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_B}},
        {KeyAct::PopOutBrowser,
         KeyPlace::Editor,
         group,
         QStringLiteral("弹出 / 放回浏览器窗口"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_D}},
        {KeyAct::Packages,
         KeyPlace::Editor,
         group,
         QStringLiteral("扩展包"),
         {Qt::CTRL + Qt::SHIFT + Qt::Key_E}},
    };
}
} // namespace

const QVector<KeyRow>& KeyTable::Rows()
{
    static const QVector<KeyRow> rows = General() + Lists() + Editor();
    return rows;
}

const KeyRow& KeyTable::RowOf(KeyAct act)
{
    const auto& rows = Rows();
    return *std::find_if(rows.begin(), rows.end(), [act](const KeyRow& row) { return row.act == act; });
}

const KeyRow* KeyTable::Find(const QKeySequence& key, KeyPlace place)
{
    for (const KeyRow& row : Rows())
        if (row.places.testFlag(place) && row.keys.contains(key))
            return &row;
    return nullptr;
}

QString KeyTable::KeyText(const QKeySequence& key)
{
    return key.toString(QKeySequence::NativeText);
}
