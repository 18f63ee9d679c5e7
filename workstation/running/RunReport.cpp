// SPDX-License-Identifier: Apache-2.0

#include "RunReport.h"

#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBaseUI/WbToast.h>

#include <QCheckBox>
#include <QClipboard>
#include <QCoreApplication>
#include <QDateTime>
#include <QGuiApplication>
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
} // namespace

ReportParts RunReportDialog::Parts(const QString& app, const QString& problem, const QString& details,
                                   const ReportParts& kept)
{
    QStringList head{
        QStringLiteral("应用：%1").arg(app),
        QStringLiteral("工作站：%1").arg(QCoreApplication::applicationVersion()),
        QStringLiteral("系统：%1").arg(QSysInfo::prettyProductName()),
        QStringLiteral("时间：%1").arg(QDateTime::currentDateTime().toString(timeFormat)),
    };
    if (!problem.isEmpty())
        head << QStringLiteral("问题：%1").arg(problem);
    const auto part = [](const QString& title, const QString& text) {
        return qMakePair(title, QStringLiteral("\n%1：\n%2").arg(title, text));
    };
    ReportParts parts{{QStringLiteral("应用和系统"), head.join(QLatin1Char('\n'))}};
    if (!details.isEmpty())
        parts << part(QStringLiteral("详细信息"), details.trimmed());
    for (const auto& [title, text] : kept)
        parts << part(title, text);
    if (kept.isEmpty())
        parts << part(QStringLiteral("运行日志"), LogLines().join(QLatin1Char('\n')));
    return parts;
}

QString RunReportDialog::Write(const QString& app, const QString& problem, const QString& details)
{
    QString report;
    for (const auto& part : Parts(app, problem, details, {}))
        report += part.second + QLatin1Char('\n');
    return report;
}

RunReportDialog::RunReportDialog(const ReportParts& parts, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    ui.setupUi(GetContentWidget());
    OfferParts(parts);
    text.Fill(ui.textReport->document(), parts);
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("RunReportDialog"));
    SetTitle(QStringLiteral("发送给作者"));
    ui.textReport->setFont(WbTheme::CodeFont());
    ui.textReport->document()->clearUndoRedoStacks();
    ui.textReport->moveCursor(QTextCursor::Start);
    connect(ui.buttonCopyReport, &QPushButton::clicked, this, &RunReportDialog::Copy);
    connect(ui.buttonSaveReport, &QPushButton::clicked, this, &RunReportDialog::Save);
}

// The head names the app and stays.
void RunReportDialog::OfferParts(const ReportParts& parts)
{
    for (int number = 1; number < parts.size(); ++number) {
        auto* box = new QCheckBox(parts.at(number).first);
        box->setChecked(true);
        ui.rowParts->insertWidget(number - 1, box);
        connect(box, &QCheckBox::toggled, this,
                [this, number](bool included) { text.SetIncluded(number, included); });
    }
}

void RunReportDialog::Copy()
{
    QGuiApplication::clipboard()->setText(ui.textReport->toPlainText());
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
    if (!file.open(QIODevice::WriteOnly) || file.write(ui.textReport->toPlainText().toUtf8()) < 0 ||
        !file.commit()) {
        WbToast::Show(QStringLiteral("无法写入文件：%1").arg(file.errorString()), ToastError);
        return;
    }
    WbToast::Show(QStringLiteral("已保存，可以作为附件发给作者"), ToastSuccess);
    accept();
}
