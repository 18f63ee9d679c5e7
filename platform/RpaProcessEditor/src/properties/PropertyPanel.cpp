// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "FieldTop_p.h"
#include "ProblemLabel_p.h"
#include "PropertyPanel_p.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbTheme.h>

#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace
{
QPixmap Tile(const QString& command, qreal ratio)
{
    const int size = DpiTool::ScaleDefault(28);
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    CommandTexts::PaintTile(painter, QRect(0, 0, size, size), command, true);
    return pixmap;
}

QLabel* Secondary(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setProperty("wbRole", QStringLiteral("secondary"));
    return label;
}
} // namespace

PropertyPanel::PropertyPanel(QWidget* parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("propertyPanel"));
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, &PropertyPanel::Build);
    const IRpaInspector* inspector = RpaEngineTool::Instance()->GetHtmlInspector();
    connect(inspector, &IRpaInspector::SigCaptured, this, &PropertyPanel::SlotCaptured);
    connect(inspector, &IRpaInspector::SigCapturingChanged, this, &PropertyPanel::SlotCapturingChanged);
    Build();
}

void PropertyPanel::SetProcess(ProcessEdits* processEdits, RpaProcess* shown)
{
    if (process)
        process->disconnect(this);
    edits = processEdits;
    process = shown;
    shownIds.clear();
    if (process)
        connect(process, &RpaProcess::SigStatementChanged, this, &PropertyPanel::SlotStatementChanged);
    Build();
}

void PropertyPanel::LetGo()
{
    if (process)
        process->disconnect(this);
    edits = nullptr;
    process = nullptr;
}

// A field that goes away while it has the keyboard still tells that its editing is finished.
void PropertyPanel::EndTyping()
{
    if (edits)
        edits->EndTyping();
}

void PropertyPanel::ShowStatements(const QStringList& ids)
{
    if (ids == shownIds)
        return;
    EndTyping();
    shownIds = ids;
    Build();
}

const RpaStatementNode* PropertyPanel::Node() const
{
    return process && shownIds.size() == 1 ? process->Find(shownIds.first()) : nullptr;
}

void PropertyPanel::FocusFirst()
{
    for (ArgumentField* field : qAsConst(fields)) {
        if (field->findChild<QLabel*>(QStringLiteral("labelProblem"))->isVisibleTo(field)) {
            field->setFocus();
            return;
        }
    }
    if (!fields.isEmpty())
        fields.first()->setFocus();
    else if (noteEdit)
        noteEdit->setFocus();
}

void PropertyPanel::Build()
{
    fields.clear();
    outputEdit = nullptr;
    outputProblem = nullptr;
    noteEdit = nullptr;
    const RpaStatementNode* node = Node();
    if (!node) {
        setWidget(BuildHint(shownIds.size() > 1
                                ? QStringLiteral("已选中 %1 条语句").arg(shownIds.size())
                                : QStringLiteral("选中一条语句，在这里填写它的参数、输出变量和备注")));
        return;
    }
    auto* content = new QWidget;
    content->setObjectName(QStringLiteral("propertyContent"));
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(8); // a message stands nearer to its field than to the next one
    layout->addWidget(BuildHeader(node->GetCommand()));
    layout->addSpacing(8);
    if (const RpaCommandInfo* info = RpaCommandCatalogue::Instance()->Find(node->GetCommand())) {
        const FieldOffers offers = Offers();
        for (const RpaArgumentInfo& argument : info->arguments) {
            auto* field = new ArgumentField(argument, offers);
            field->SetText(node->GetArgument(argument.name));
            const QString name = argument.name;
            connect(field, &ArgumentField::SigEdited, this, [this, name](const QString& text) {
                Change(name, [name, text](RpaStatement& values) { values.arguments.insert(name, text); });
            });
            connect(field, &ArgumentField::SigEditingFinished, this, [this] { EndTyping(); });
            connect(field, &ArgumentField::SigCaptureAsked, this, [this, name] { StartCapture(name); });
            fields.append(field);
            layout->addWidget(field);
        }
        if (!info->output.title.isEmpty())
            layout->addWidget(BuildOutput(*info));
    }
    layout->addWidget(BuildNote());
    layout->addStretch(1);
    setWidget(content);
}

void PropertyPanel::StartCapture(const QString& argument)
{
    EndTyping();
    if (!RpaEngineTool::Instance()->GetHtmlInspector()->StartCapture())
        return;
    ++captureNumber;
    captureTarget = {process, shownIds.value(0), argument};
}

// Whoever asked for it, the new element is offered from now on.
void PropertyPanel::SlotCaptured(const QString& elementId)
{
    if (!edits || !edits->App() || edits->App()->GetHtmlNodeManager()->IndexOf(elementId) < 0)
        return;
    edits->App()->SetModified(true);
    // The author may look at another statement by now; the one that asked is filled all the same.
    const CaptureTarget target = std::exchange(captureTarget, CaptureTarget());
    if (const RpaStatementNode* asked = target.process ? target.process->Find(target.statement) : nullptr) {
        ChangeIn(*target.process, *asked, target.argument, [&target, elementId](RpaStatement& values) {
            values.arguments.insert(target.argument, elementId);
        });
        EndTyping();
    }
    Build();
    for (ArgumentField* field : qAsConst(fields))
        if (shownIds.first() == target.statement && field->Name() == target.argument)
            field->setFocus();
}

void PropertyPanel::SlotCapturingChanged(bool capturing)
{
    // The browser lets go of the mouse before the element is told; an element that never comes is not waited
    // for.
    if (capturing)
        return;
    QMetaObject::invokeMethod(
        this,
        [this, ended = captureNumber] {
            if (ended == captureNumber)
                captureTarget = CaptureTarget();
        },
        Qt::QueuedConnection);
}

QWidget* PropertyPanel::BuildHint(const QString& text) const
{
    QLabel* label = Secondary(text);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(24);
    return label;
}

QWidget* PropertyPanel::BuildHeader(const QString& command) const
{
    auto* header = new QWidget;
    auto* tile = new QLabel;
    tile->setPixmap(Tile(command, devicePixelRatioF()));
    auto* title = new QLabel(CommandTexts::Title(command));
    title->setObjectName(QStringLiteral("labelStatementTitle"));
    title->setTextFormat(Qt::PlainText);
    QFont font = title->font();
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    auto* top = new QHBoxLayout;
    top->addWidget(tile);
    top->addWidget(title, 1);
    auto* layout = new QVBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    const RpaCommandInfo* info = RpaCommandCatalogue::Instance()->Find(command);
    layout->addWidget(
        Secondary(info ? info->description
                       : QStringLiteral("此版本不认识这条指令。它的内容会原样保留，运行前请更新工作台。")));
    return header;
}

QWidget* PropertyPanel::BuildOutput(const RpaCommandInfo& info)
{
    auto* widget = new QWidget;
    auto* label = new QLabel(QStringLiteral("%1保存到变量").arg(info.output.title));
    auto* edit = new WbLineEdit;
    edit->setObjectName(QStringLiteral("lineEditOutput"));
    edit->setPlaceholderText(info.output.required ? QStringLiteral("变量名")
                                                  : QStringLiteral("变量名，可不填"));
    edit->setAccessibleName(label->text());
    edit->setText(Node()->GetValues().output);
    auto* problem = new ProblemLabel(QStringLiteral("labelOutputProblem"));
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(new FieldTop(label));
    layout->addWidget(edit);
    layout->addWidget(problem);
    outputEdit = edit;
    outputProblem = problem;
    outputRequired = info.output.required;
    CheckOutput();
    connect(edit, &QLineEdit::textEdited, this, [this](const QString& text) {
        Change(QStringLiteral(" output"), [text](RpaStatement& values) { values.output = text.trimmed(); });
        CheckOutput();
    });
    connect(edit, &QLineEdit::editingFinished, this, [this] { EndTyping(); });
    return widget;
}

void PropertyPanel::CheckOutput()
{
    const QString name = outputEdit->text().trimmed();
    const QString missing = outputRequired ? QStringLiteral("必须填写") : QString();
    outputProblem->Tell(name.isEmpty() ? missing : ArgumentText::VariableProblem(name));
}

QWidget* PropertyPanel::BuildNote()
{
    auto* widget = new QWidget;
    widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* label = new QLabel(QStringLiteral("备注"));
    auto* edit = new QPlainTextEdit;
    edit->setObjectName(QStringLiteral("textEditNote"));
    new WbTextLimit(edit, label->text());
    edit->setAccessibleName(label->text());
    edit->setPlaceholderText(QStringLiteral("给自己和同事的说明，不影响运行"));
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().height() * 3 + 16);
    edit->setPlainText(Node()->GetValues().note);
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(new FieldTop(label));
    layout->addWidget(edit);
    noteEdit = edit;
    connect(edit, &QPlainTextEdit::textChanged, this, [this, edit] {
        const QString text = edit->toPlainText();
        Change(QStringLiteral(" note"), [text](RpaStatement& values) { values.note = text; });
    });
    return widget;
}

FieldOffers PropertyPanel::Offers() const
{
    FieldOffers offers;
    offers.variables = CommandTexts::Variables(*process);
    offers.processes = edits->Manager()->GetProcessNames();
    const auto addElements = [&offers](const RpaNodeManager* manager) {
        const QVector<RpaNode> nodes = manager ? manager->GetNodes() : QVector<RpaNode>();
        for (const RpaNode& node : nodes)
            offers.elements.append({node.id, node.name});
    };
    addElements(edits->App()->GetHtmlNodeManager());
    addElements(edits->App()->GetUiaNodeManager());
    const RpaUIDataManager* pages = edits->App()->GetUIDataManager();
    for (int i = 0; pages && i < pages->GetCount(); ++i) {
        offers.parameters += pages->GetUIData(i)->GetParamData()->GetNames();
        offers.columns += pages->GetUIData(i)->GetTableData()->GetColumnNames();
    }
    offers.parameters.removeDuplicates();
    offers.columns.removeDuplicates();
    offers.rows = CommandTexts::LoopVariables(*process);
    return offers;
}

void PropertyPanel::Change(const QString& key, const std::function<void(RpaStatement&)>& change)
{
    if (const RpaStatementNode* node = Node())
        ChangeIn(*process, *node, key, change);
}

void PropertyPanel::ChangeIn(RpaProcess& changed, const RpaStatementNode& node, const QString& key,
                             const std::function<void(RpaStatement&)>& change)
{
    RpaStatement values = node.GetValues();
    change(values);
    edits->SetValues(changed, values, key,
                     QStringLiteral("修改“%1”").arg(CommandTexts::Title(values.command)));
}

void PropertyPanel::SlotStatementChanged(const RpaStatementNode* node)
{
    if (node != Node())
        return;
    for (ArgumentField* field : qAsConst(fields))
        field->SetText(node->GetArgument(field->Name()));
    const RpaStatement& values = node->GetValues();
    if (outputEdit && outputEdit->text().trimmed() != values.output) {
        outputEdit->setText(values.output);
        CheckOutput();
    }
    if (noteEdit && noteEdit->toPlainText() != values.note) {
        const QSignalBlocker quiet(noteEdit);
        noteEdit->setPlainText(values.note);
    }
}
