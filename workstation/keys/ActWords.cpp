// SPDX-License-Identifier: Apache-2.0

#include "ActWords.h"

#include <QHash>

QStringList ActWords::Of(const QString& text)
{
    static const QHash<QString, QString> words{
        {QStringLiteral("使用指南"), QStringLiteral("帮助 教程 手册 说明书")},
        {QStringLiteral("快捷键一览"), QStringLiteral("热键 按键 帮助")},
        {QStringLiteral("返回"), QStringLiteral("后退 关闭 退出 离开")},
        {QStringLiteral("设置"), QStringLiteral("选项 偏好 主题 配置")},
        {QStringLiteral("我的应用"), QStringLiteral("作品 项目")},
        {QStringLiteral("线上应用"), QStringLiteral("已发布 正式")},
        {QStringLiteral("灰度应用"), QStringLiteral("内测 试用")},
        {QStringLiteral("新建可视化应用"), QStringLiteral("创建 添加 项目 机器人")},
        {QStringLiteral("新建编程应用"), QStringLiteral("创建 添加 项目 代码 Python")},
        {QStringLiteral("搜索应用"), QStringLiteral("查找 过滤")},
        {QStringLiteral("刷新应用列表"), QStringLiteral("更新 重新载入")},
        {QStringLiteral("界面设计"), QStringLiteral("表单 参数 页面")},
        {QStringLiteral("流程设计"), QStringLiteral("步骤 指令 代码")},
        {QStringLiteral("使用说明设计"), QStringLiteral("帮助 文档 手册")},
        {QStringLiteral("保存"), QStringLiteral("存盘 存储")},
        {QStringLiteral("另存为"), QStringLiteral("存盘 新版本 副本")},
        {QStringLiteral("撤销"), QStringLiteral("回退 取消 还原 undo")},
        {QStringLiteral("重做"), QStringLiteral("恢复 redo")},
        {QStringLiteral("运行"), QStringLiteral("执行 启动 开始 测试 调试 试运行")},
        {QStringLiteral("停止"), QStringLiteral("结束 终止 中断")},
        {QStringLiteral("不停顿运行"), QStringLiteral("执行 不调试 忽略断点")},
        {QStringLiteral("运行到此处"), QStringLiteral("调试 光标")},
        {QStringLiteral("从此处运行…"), QStringLiteral("调试 跳过 继续 光标")},
        {QStringLiteral("只运行所选…"), QStringLiteral("调试 部分 单个 步骤")},
        {QStringLiteral("暂停"), QStringLiteral("中断 调试")},
        {QStringLiteral("单步跳过"), QStringLiteral("调试 逐过程 步过 下一步")},
        {QStringLiteral("单步进入"), QStringLiteral("调试 逐语句 步入")},
        {QStringLiteral("单步跳出"), QStringLiteral("调试 步出 返回")},
        {QStringLiteral("设置 / 取消断点"), QStringLiteral("调试 停在 暂停 中断")},
        {QStringLiteral("调试窗格"), QStringLiteral("变量 监视 表达式 调用栈 断点 查看")},
        {QStringLiteral("灰度"), QStringLiteral("内测 试用 邀请码 发布")},
        {QStringLiteral("上线"), QStringLiteral("发布 正式 公开")},
        {QStringLiteral("生成模板"), QStringLiteral("导出 模版")},
        {QStringLiteral("选择版本"), QStringLiteral("切换 历史")},
        {QStringLiteral("版本详情"), QStringLiteral("历史 谁 何时 备注 记录")},
        {QStringLiteral("运行记录"), QStringLiteral("历史 日志 失败 原因 结果 参数")},
        {QStringLiteral("折叠 / 展开浏览器窗口"), QStringLiteral("隐藏 显示 收起 网页")},
        {QStringLiteral("弹出 / 放回浏览器窗口"), QStringLiteral("独立 分离 网页")},
        {QStringLiteral("扩展包"), QStringLiteral("依赖 安装 组件 库")},
        {QStringLiteral("重命名"), QStringLiteral("改名")},
        {QStringLiteral("删除"), QStringLiteral("移除 去掉")},
        {QStringLiteral("复制"), QStringLiteral("拷贝")},
        {QStringLiteral("剪切"), QStringLiteral("移动")},
        {QStringLiteral("查找"), QStringLiteral("搜索 定位")},
        {QStringLiteral("显示 Python"), QStringLiteral("代码 程序 源码 生成")},
        {QStringLiteral("在所有流程中查找…"), QStringLiteral("搜索 全局 全部")},
        {QStringLiteral("在所有流程中替换…"), QStringLiteral("搜索 全局 全部 批量 修改")},
        {QStringLiteral("去掉外层"), QStringLiteral("拆开 解除 取出 移除循环")},
        {QStringLiteral("提取为子流程…"), QStringLiteral("重构 拆分 抽取 独立")},
        {QStringLiteral("展开子流程"), QStringLiteral("重构 合并 内联 取回")},
        {QStringLiteral("全部折叠"), QStringLiteral("收起 大纲")},
        {QStringLiteral("设置 / 取消书签"), QStringLiteral("标记 收藏 记号")},
    };
    return words.value(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
