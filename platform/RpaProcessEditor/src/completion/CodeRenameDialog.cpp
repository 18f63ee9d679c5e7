// SPDX-License-Identifier: Apache-2.0

#include "CodeRenameDialog_p.h"
#include "PythonWords_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QRegularExpression>
#include <QStyle>

namespace
{
constexpr int longestRow = 200;

bool HasWord(const QString& text, const QString& word)
{
    const QRegularExpression whole(QStringLiteral("\\b%1\\b").arg(QRegularExpression::escape(word)),
                                   QRegularExpression::UseUnicodePropertiesOption);
    return text.contains(whole);
}
} // namespace

CodeRenameDialog::CodeRenameDialog(const QString& programText, const QString& name,
                                   const QVector<int>& places, QWidget* parent)
    : WbBaseDialog(parent), text(programText), formerName(name), offsets(places)
{
    setObjectName(QStringLiteral("CodeRenameDialog"));
    SetTitle(QStringLiteral("重命名“%1”").arg(name));
    ui.setupUi(GetContentWidget());
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(300));
    ui.listCodePlaces->setFont(WbTheme::CodeFont());
    ui.lineEditCodeName->setText(name);
    ui.lineEditCodeName->selectAll();
    connect(ui.lineEditCodeName, &QLineEdit::textChanged, this, &CodeRenameDialog::SlotChanged);
    connect(ui.pushButtonRename, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotChanged();
    ui.lineEditCodeName->setFocus();
}

void CodeRenameDialog::SlotChanged()
{
    const QString name = GetName();
    const QString problem = PythonWords::ProblemOf(name);
    ui.labelCodeRename->setText(problem.isEmpty() ? Note(name) : problem);
    ui.labelCodeRename->setProperty("wbRole", problem.isEmpty() ? QStringLiteral("secondary")
                                                                : QStringLiteral("error"));
    ui.labelCodeRename->style()->unpolish(ui.labelCodeRename);
    ui.labelCodeRename->style()->polish(ui.labelCodeRename);
    ui.pushButtonRename->setEnabled(problem.isEmpty() && name != formerName);
    ShowLines(problem.isEmpty() ? name : formerName);
}

QString CodeRenameDialog::Note(const QString& name) const
{
    QString count = QStringLiteral("将修改 %1 处").arg(offsets.size());
    if (name == formerName || !HasWord(text, name))
        return count;
    return count + QStringLiteral("；程序中已经有“%1”，改名后可能与它混淆").arg(name);
}

// Each line once, however often the name stands in it.
void CodeRenameDialog::ShowLines(const QString& name)
{
    QStringList rows;
    int line = 1;
    int counted = 0;
    for (int i = 0; i < offsets.size();) {
        line += text.midRef(counted, offsets.at(i) - counted).count(QLatin1Char('\n'));
        counted = offsets.at(i);
        const int begin = text.lastIndexOf(QLatin1Char('\n'), offsets.at(i) - 1) + 1;
        int end = text.indexOf(QLatin1Char('\n'), offsets.at(i));
        end = end < 0 ? text.size() : end;
        QString row;
        int at = begin;
        for (; i < offsets.size() && offsets.at(i) < end; ++i) {
            row += text.midRef(at, offsets.at(i) - at) + name;
            at = offsets.at(i) + formerName.size();
        }
        row += text.midRef(at, end - at);
        rows.append(QStringLiteral("%1  %2").arg(line, 5).arg(row.trimmed().left(longestRow)));
    }
    ui.listCodePlaces->clear();
    ui.listCodePlaces->addItems(rows);
}
