// SPDX-License-Identifier: Apache-2.0

#include "KeyTable.h"

#include <algorithm>

namespace
{
// The rows of a group, which belong where the group does, and some elsewhere too.
QVector<KeyRow> In(KeyPlaces places, const QString& group, QVector<KeyRow> rows)
{
    for (KeyRow& row : rows) {
        row.places |= places;
        row.group = group;
    }
    return rows;
}

QVector<KeyRow> General()
{
    return In(KeyPlace::Everywhere, QStringLiteral("工作站"),
              {
                  {KeyAct::ShowPalette, QStringLiteral("命令面板"), {Qt::CTRL + Qt::SHIFT + Qt::Key_P}},
                  {KeyAct::ShowGuide, QStringLiteral("使用指南"), {Qt::Key_F1}},
                  {KeyAct::ShowKeys, QStringLiteral("快捷键一览"), {Qt::Key_Question, Qt::CTRL + Qt::Key_F1}},
                  {KeyAct::Back, QStringLiteral("返回"), {Qt::CTRL + Qt::Key_W}},
                  {KeyAct::Settings, QStringLiteral("设置"), {Qt::CTRL + Qt::Key_Comma}},
              });
}

QVector<KeyRow> Lists()
{
    return In(KeyPlace::Lists, QStringLiteral("应用列表"),
              {
                  {KeyAct::ListMine, QStringLiteral("我的应用"), {Qt::CTRL + Qt::Key_1}},
                  {KeyAct::ListOnline, QStringLiteral("线上应用"), {Qt::CTRL + Qt::Key_2}},
                  {KeyAct::ListGray, QStringLiteral("灰度应用"), {Qt::CTRL + Qt::Key_3}},
                  {KeyAct::ListNext, QStringLiteral("下一个列表"), {Qt::CTRL + Qt::Key_PageDown}},
                  {KeyAct::ListPrevious, QStringLiteral("上一个列表"), {Qt::CTRL + Qt::Key_PageUp}},
                  {KeyAct::NewVisual, QStringLiteral("新建可视化应用"), {Qt::CTRL + Qt::Key_N}},
                  {KeyAct::NewProgram, QStringLiteral("新建编程应用"), {Qt::CTRL + Qt::SHIFT + Qt::Key_N}},
                  {KeyAct::SearchApps, QStringLiteral("搜索应用"), {Qt::CTRL + Qt::Key_F}},
                  {KeyAct::RefreshApps, QStringLiteral("刷新应用列表"), {Qt::Key_F5}},
              });
}

QVector<KeyRow> Editor()
{
    return In(
        KeyPlace::Editor, QStringLiteral("编辑应用"),
        {
            {KeyAct::PageUI, QStringLiteral("界面设计"), {Qt::CTRL + Qt::Key_1}},
            {KeyAct::PageProcess, QStringLiteral("流程设计"), {Qt::CTRL + Qt::Key_2}},
            {KeyAct::PageUsage, QStringLiteral("使用说明设计"), {Qt::CTRL + Qt::Key_3}},
            {KeyAct::PageNext, QStringLiteral("下一页"), {Qt::CTRL + Qt::Key_PageDown}},
            {KeyAct::PagePrevious, QStringLiteral("上一页"), {Qt::CTRL + Qt::Key_PageUp}},
            {KeyAct::Save, QStringLiteral("保存"), {Qt::CTRL + Qt::Key_S}},
            {KeyAct::SaveAs, QStringLiteral("另存为"), {Qt::CTRL + Qt::SHIFT + Qt::Key_S}},
            {KeyAct::Undo, QStringLiteral("撤销"), {Qt::CTRL + Qt::Key_Z}},
            {KeyAct::Redo, QStringLiteral("重做"), {Qt::CTRL + Qt::Key_Y, Qt::CTRL + Qt::SHIFT + Qt::Key_Z}},
            {KeyAct::Run, QStringLiteral("运行"), {Qt::Key_F5}, KeyPlace::Run},
            {KeyAct::Stop, QStringLiteral("停止"), {Qt::SHIFT + Qt::Key_F5}, KeyPlace::Run},
            {KeyAct::RunFree, QStringLiteral("不停顿运行"), {Qt::CTRL + Qt::Key_F5}},
            {KeyAct::RunToHere, QStringLiteral("运行到此处"), {Qt::CTRL + Qt::Key_F10}},
            {KeyAct::RunFromHere, QStringLiteral("从此处运行…"), {Qt::CTRL + Qt::SHIFT + Qt::Key_F10}},
            {KeyAct::RunSelected, QStringLiteral("只运行所选…"), {Qt::CTRL + Qt::SHIFT + Qt::Key_F5}},
            {KeyAct::Pause, QStringLiteral("暂停"), {Qt::Key_F6}},
            {KeyAct::StepOver, QStringLiteral("单步跳过"), {Qt::Key_F10}},
            {KeyAct::StepInto, QStringLiteral("单步进入"), {Qt::Key_F11}},
            {KeyAct::StepOut, QStringLiteral("单步跳出"), {Qt::SHIFT + Qt::Key_F11}},
            {KeyAct::Breakpoint, QStringLiteral("设置 / 取消断点"), {Qt::Key_F9}},
            {KeyAct::DebugPanes, QStringLiteral("调试窗格"), {Qt::CTRL + Qt::ALT + Qt::Key_D}},
            {KeyAct::Gray, QStringLiteral("灰度"), {Qt::CTRL + Qt::SHIFT + Qt::Key_G}},
            {KeyAct::Publish, QStringLiteral("上线"), {Qt::CTRL + Qt::SHIFT + Qt::Key_O}},
            {KeyAct::ExportTemplate, QStringLiteral("生成模板"), {}},
            {KeyAct::ChooseVersion, QStringLiteral("选择版本"), {Qt::CTRL + Qt::SHIFT + Qt::Key_L}},
            {KeyAct::ShowVersions, QStringLiteral("版本详情"), {Qt::CTRL + Qt::SHIFT + Qt::Key_I}},
            {KeyAct::ShowRuns, QStringLiteral("运行记录"), {Qt::CTRL + Qt::SHIFT + Qt::Key_H}},
            {KeyAct::ShowProblems, QStringLiteral("问题"), {Qt::CTRL + Qt::SHIFT + Qt::Key_M}},
            {KeyAct::FoldBrowser,
             QStringLiteral("折叠 / 展开浏览器窗口"),
             {Qt::CTRL + Qt::SHIFT + Qt::Key_B}},
            {KeyAct::PopOutBrowser,
             QStringLiteral("弹出 / 放回浏览器窗口"),
             {Qt::CTRL + Qt::SHIFT + Qt::Key_D}},
            {KeyAct::Packages, QStringLiteral("扩展包"), {Qt::CTRL + Qt::SHIFT + Qt::Key_E}},
        });
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
