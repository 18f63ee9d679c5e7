// SPDX-License-Identifier: Apache-2.0

#include "FileEndings_p.h"
#include "LinesField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbTextLimit.h>

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>

namespace
{
constexpr int fileLines = 3;
constexpr int leastLines = 2;
constexpr int frame = 14; // of the edit, above and below the lines
} // namespace

LinesField::LinesField(const RpaParamItem& item)
    : isFiles(item.type == RpaParamType::Files), endings(item.endings), edit(new WbTextEdit)
{
    const int usual = item.lines > 0 ? item.lines : RpaParamItem::usualLines;
    const int lines = isFiles ? fileLines : qBound(leastLines, usual, RpaParamItem::mostLines);
    edit->ensurePolished();
    edit->setFixedHeight(lines * edit->fontMetrics().lineSpacing() + DpiTool::ScaleDefault(frame));
    edit->setPlaceholderText(isFiles && item.hint.isEmpty() ? QStringLiteral("每行一个文件") : item.hint);
    new WbTextLimit(edit, item.GetTitle());
    AddInput(edit, 4);
    if (isFiles)
        AddButton();
    connect(edit, &QTextEdit::textChanged, this, &LinesField::TakeText);
}

void LinesField::AddButton()
{
    auto* button = new QToolButton;
    button->setIcon(WbIcons::Get(QStringLiteral("open")));
    button->setToolTip(QStringLiteral("添加文件"));
    button->setAccessibleName(QStringLiteral("添加文件"));
    connect(button, &QToolButton::clicked, this, &LinesField::ChooseFiles);
    layout()->addWidget(button);
    layout()->setAlignment(button, Qt::AlignTop);
}

QVariant LinesField::ValueOf(const QString& text) const
{
    if (!isFiles)
        return text.isEmpty() ? QVariant() : QVariant(text);
    QStringList paths;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (!line.trimmed().isEmpty() && !paths.contains(line.trimmed()))
            paths << line.trimmed();
    return paths.isEmpty() ? QVariant() : QVariant(paths);
}

void LinesField::ShowValue(const QVariant& value)
{
    const QString text = isFiles ? value.toStringList().join(QLatin1Char('\n')) : value.toString();
    // What comes back while the user types it must not move the cursor.
    const QVariant shown = ValueOf(edit->toPlainText());
    if (shown == ValueOf(text) && shown.isValid() == ValueOf(text).isValid())
        return;
    const QSignalBlocker blocker(edit);
    edit->setText(text);
}

void LinesField::TakeText()
{
    emit SigEntered(ValueOf(edit->toPlainText()));
}

void LinesField::ChooseFiles()
{
    const QStringList paths =
        WbSystemDialogs::OpenFiles(this, QStringLiteral("选择文件"), FileEndings::FilterOf(endings));
    if (paths.isEmpty())
        return;
    QString text = edit->toPlainText();
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    edit->setText(text + paths.join(QLatin1Char('\n')));
}
