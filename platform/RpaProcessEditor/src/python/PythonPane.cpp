// SPDX-License-Identifier: Apache-2.0

#include "PythonPane_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBaseUI/WbToast.h>

#include <QApplication>
#include <QClipboard>
#include <QScopedValueRollback>
#include <QTextBlock>

namespace
{
constexpr int pauseMs = 300;

struct CopiedProcess
{
    QString name;
    QVector<RpaStatement> statements;
};

RpaProcessPython MakePython(const QVector<CopiedProcess>& copies, const QString& name)
{
    ProcessDataManager processes;
    for (const CopiedProcess& copy : copies)
        processes.AddProcess(copy.name)->SetStatements(copy.statements);
    return RpaProcessPython::Of(processes, name);
}
} // namespace

PythonPane::PythonPane(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    thread.setMaxThreadCount(1);
    pause.setSingleShot(true);
    pause.setInterval(pauseMs);
    ui.codeOfSteps->setUndoRedoEnabled(false);
    ui.buttonCopy->setIcon(WbIcons::Get(QStringLiteral("copy")));
    ui.buttonClose->setIcon(WbIcons::Get(QStringLiteral("close")));
    connect(&pause, &QTimer::timeout, this, &PythonPane::Make);
    connect(ui.buttonCopy, &QToolButton::clicked, this, &PythonPane::Copy);
    connect(ui.buttonClose, &QToolButton::clicked, this, &QWidget::hide);
    connect(ui.codeOfSteps, &QPlainTextEdit::cursorPositionChanged, this, &PythonPane::SlotCursorMoved);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, [this] { Mark(false); });
    hide();
}

PythonPane::~PythonPane()
{
    thread.clear();
    thread.waitForDone();
}

void PythonPane::SetApp(const RpaAppDataPtr& appData)
{
    if (app)
        app->GetProcessDataManager()->disconnect(this);
    app = appData;
    processName.clear();
    if (app)
        connect(app->GetProcessDataManager(), &ProcessDataManager::SigChanged, &pause,
                qOverload<>(&QTimer::start));
    Make();
}

void PythonPane::ShowProcess(const QString& name)
{
    if (processName == name)
        return;
    processName = name;
    Make();
}

void PythonPane::SetCurrent(const QString& id)
{
    current = id;
    Mark(true);
}

void PythonPane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    Make();
}

void PythonPane::Make()
{
    pause.stop();
    const int number = ++newest;
    if (!isVisible())
        return;
    const ProcessDataManager* const processes = app ? app->GetProcessDataManager() : nullptr;
    QVector<CopiedProcess> copies;
    for (int i = 0; processes && i < processes->GetCount(); ++i)
        copies.append({processes->GetProcess(i)->GetName(), processes->GetProcess(i)->GetStatements()});
    thread.clear();
    thread.start([this, number, copies, name = processName] {
        const RpaProcessPython made = MakePython(copies, name);
        QMetaObject::invokeMethod(
            this, [this, number, made] { Take(number, made); }, Qt::QueuedConnection);
    });
}

void PythonPane::Take(int number, const RpaProcessPython& made)
{
    if (number != newest)
        return; // something has changed meanwhile
    python = made;
    ui.buttonCopy->setEnabled(!python.source.isEmpty());
    Write(python.source);
    Mark(true);
}

// Only what differs: the rest keeps its place on the screen and its colours.
void PythonPane::Write(const QString& text)
{
    const QString before = ui.codeOfSteps->toPlainText();
    const int shorter = qMin(before.size(), text.size());
    int head = 0;
    while (head < shorter && before.at(head) == text.at(head))
        ++head;
    int tail = 0;
    while (tail < shorter - head && before.at(before.size() - 1 - tail) == text.at(text.size() - 1 - tail))
        ++tail;
    if (head == before.size() && head == text.size())
        return;
    const QScopedValueRollback<bool> guard(marking, true);
    QTextCursor cursor(ui.codeOfSteps->document());
    cursor.setPosition(head);
    cursor.setPosition(before.size() - tail, QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(head, text.size() - head - tail));
}

void PythonPane::Mark(bool scrolls)
{
    QList<QTextEdit::ExtraSelection> marks;
    for (int i = 0; !current.isEmpty() && i < python.origins.size(); ++i) {
        if (python.origins.at(i).statementId != current || python.origins.at(i).processName != processName)
            continue;
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(ui.codeOfSteps->document()->findBlockByNumber(i));
        mark.format.setBackground(WbTheme::Instance()->Color(WbColor::AccentSoft));
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        marks.append(mark);
    }
    ui.codeOfSteps->SetFoundMarks(marks);
    if (!scrolls || marks.isEmpty() || marking)
        return;
    const QScopedValueRollback<bool> guard(marking, true);
    if (!ui.codeOfSteps->hasFocus())
        ui.codeOfSteps->setTextCursor(marks.constFirst().cursor);
    ui.codeOfSteps->ensureCursorVisible();
}

void PythonPane::SlotCursorMoved()
{
    if (marking)
        return;
    const RpaProcessPython::Origin origin = python.origins.value(ui.codeOfSteps->textCursor().blockNumber());
    if (origin.statementId.isEmpty() || (origin.statementId == current && origin.processName == processName))
        return;
    emit SigStatementChosen(origin.processName, origin.statementId);
}

void PythonPane::Copy()
{
    QApplication::clipboard()->setText(python.source);
    WbToast::Show(QStringLiteral("已复制，可以粘贴到编程应用里"), ToastSuccess);
}
