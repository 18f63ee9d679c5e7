// SPDX-License-Identifier: Apache-2.0

#include "RunReport.h"

#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBaseUI/WbToast.h>

#include <QClipboard>
#include <QCoreApplication>
#include <QDateTime>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSaveFile>
#include <QSysInfo>

namespace
{
constexpr int mostLogLines = 1000;
const QString timeFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

QStringList LogLines()
{
    const auto* manager = RpaEngineModule::Instance()->GetLogManager();
    QVector<RpaLogLine> lines = manager->GetLogDataSource()->GetLines();
    QStringList texts;
    if (lines.size() > mostLogLines) {
        texts << QStringLiteral("（只有最后 %1 行）").arg(mostLogLines);
        lines = lines.mid(lines.size() - mostLogLines);
    }
    for (const RpaLogLine& line : lines)
        texts << QStringLiteral("%1 %2 %3")
                     .arg(line.time.toString(timeFormat), RpaLogLevelTitle(line.level), line.text);
    return texts;
}

QPushButton* MakeButton(QHBoxLayout& row, const char* name, const QString& text, int type)
{
    auto* button = new WbPushButton(nullptr, type);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    row.addWidget(button);
    return button;
}
} // namespace

QString RunReportDialog::Write(const QString& app, const QString& problem, const QString& details)
{
    QStringList parts{
        QStringLiteral("应用：%1").arg(app),
        QStringLiteral("工作站：%1").arg(QCoreApplication::applicationVersion()),
        QStringLiteral("系统：%1").arg(QSysInfo::prettyProductName()),
        QStringLiteral("时间：%1").arg(QDateTime::currentDateTime().toString(timeFormat)),
    };
    if (!problem.isEmpty())
        parts << QStringLiteral("问题：%1").arg(problem);
    if (!details.isEmpty())
        parts << QString() << QStringLiteral("详细信息：") << details.trimmed();
    parts << QString() << QStringLiteral("运行日志：") << LogLines();
    return parts.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

RunReportDialog::RunReportDialog(const QString& report, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), text(new QPlainTextEdit(report))
{
    setObjectName(QStringLiteral("RunReportDialog"));
    SetTitle(QStringLiteral("发送给作者"));
    auto* hint = new WbLabel(QStringLiteral(
        "下面的内容可以帮助作者找到原因。请先删去不想让别人看到的部分，再复制或保存后发给作者。"));
    hint->setProperty("hint", true);
    hint->setWordWrap(true);
    text->setObjectName(QStringLiteral("textReport"));
    text->setAccessibleName(QStringLiteral("发给作者的内容"));
    text->setFont(WbTheme::CodeFont());
    text->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    QPushButton* const copy =
        MakeButton(*buttons, "buttonCopyReport", QStringLiteral("复制"), Wb::PrimaryButton);
    QPushButton* const save =
        MakeButton(*buttons, "buttonSaveReport", QStringLiteral("保存为文件"), Wb::SecondaryButton);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 16, 24, 24);
    layout->setSpacing(16);
    layout->addWidget(hint);
    layout->addWidget(text, 1);
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(680, 420);
    connect(copy, &QPushButton::clicked, this, &RunReportDialog::Copy);
    connect(save, &QPushButton::clicked, this, &RunReportDialog::Save);
    WbScaledForm::Follow(GetContentWidget());
}

void RunReportDialog::Copy()
{
    QGuiApplication::clipboard()->setText(text->toPlainText());
    WbToast::Show(QStringLiteral("已复制，可以粘贴到邮件或聊天中发给作者"), ToastSuccess);
    accept();
}

void RunReportDialog::Save()
{
    const QPointer<RunReportDialog> self(this);
    const QString path =
        WbSystemDialogs::SaveFile(this, QStringLiteral("保存为文件"), QStringLiteral("运行问题.txt"),
                                  QStringLiteral("文本文件 (*.txt)"));
    if (path.isEmpty() || !self)
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text->toPlainText().toUtf8()) < 0 || !file.commit()) {
        WbToast::Show(QStringLiteral("无法写入文件：%1").arg(file.errorString()), ToastError);
        return;
    }
    WbToast::Show(QStringLiteral("已保存，可以作为附件发给作者"), ToastSuccess);
    accept();
}
