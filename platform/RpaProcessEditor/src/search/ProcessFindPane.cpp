// SPDX-License-Identifier: Apache-2.0

#include "PlaceTexts_p.h"
#include "ProcessFindPane_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbToast.h>

#include <QCheckBox>
#include <QKeyEvent>

ProcessFindPane::ProcessFindPane(QWidget* parent)
    : WbFindBar(QStringLiteral("在所有流程中查找"), parent),
      caseBox(AddBox(QStringLiteral("checkBoxFindCase"), QStringLiteral("区分大小写"), false)),
      wordBox(AddBox(QStringLiteral("checkBoxFindWord"), QStringLiteral("整个单词"), false)),
      namesBox(AddBox(QStringLiteral("checkBoxFindNames"), QStringLiteral("变量名"), true)),
      textsBox(AddBox(QStringLiteral("checkBoxFindTexts"), QStringLiteral("文本"), true)),
      notesBox(AddBox(QStringLiteral("checkBoxFindNotes"), QStringLiteral("备注"), true)),
      replaceRow(new QWidget), list(new PlaceList)
{
    setObjectName(QStringLiteral("processFindPane"));
    // The editor has a bar for one process, too.
    findChild<QWidget*>(QStringLiteral("lineEditFind"))
        ->setObjectName(QStringLiteral("lineEditFindEverywhere"));
    findChild<QWidget*>(QStringLiteral("labelFindCount"))
        ->setObjectName(QStringLiteral("labelFindEverywhere"));
    replace.setupUi(replaceRow);
    AddRow(replaceRow);
    BuildList();
    looking.setSingleShot(true);
    looking.setInterval(0);
    connect(&looking, &QTimer::timeout, this, &ProcessFindPane::Find);
    connect(this, &WbFindBar::SigTextChanged, &looking, qOverload<>(&QTimer::start));
    connect(this, &WbFindBar::SigFind, list, &PlaceList::Step);
    connect(replace.lineEditReplaceEverywhere, &QLineEdit::textChanged, this, &ProcessFindPane::ShowPlaces);
    connect(replace.replaceChosenButton, &QPushButton::clicked, this, &ProcessFindPane::ReplaceChosen);
    connect(replace.replaceEverywhereButton, &QPushButton::clicked, this, &ProcessFindPane::ReplaceAll);
    UpdateButtons();
}

QCheckBox* ProcessFindPane::AddBox(const QString& name, const QString& text, bool checked)
{
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    box->setChecked(checked);
    connect(box, &QCheckBox::toggled, &looking, qOverload<>(&QTimer::start));
    AddOption(box);
    return box;
}

void ProcessFindPane::BuildList()
{
    list->setObjectName(QStringLiteral("foundPlaces"));
    list->setAccessibleName(QStringLiteral("找到的位置"));
    list->setMinimumHeight(DpiTool::ScaleDefault(90));
    AddRow(list);
    connect(list, &PlaceList::SigShown, this, &ProcessFindPane::SigPlaceShown);
    connect(list, &PlaceList::SigChosen, this, &ProcessFindPane::SigPlaceChosen);
    connect(list, &PlaceList::SigSelectionChanged, this, &ProcessFindPane::UpdateButtons);
}

void ProcessFindPane::SetEdits(ProcessEdits* processEdits)
{
    edits = processEdits;
    if (edits)
        connect(edits->Manager(), &ProcessDataManager::SigChanged, &looking, qOverload<>(&QTimer::start));
    looking.start();
}

void ProcessFindPane::OpenWith(bool replacing)
{
    replaceRow->setVisible(replacing);
    list->ShowAfter(replacing);
    Open();
}

void ProcessFindPane::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && replace.lineEditReplaceEverywhere->hasFocus())
        return; // nothing is replaced by accident
    WbFindBar::keyPressEvent(event);
}

void ProcessFindPane::showEvent(QShowEvent* event)
{
    WbFindBar::showEvent(event);
    looking.start();
}

RpaProcessSearch ProcessFindPane::Search() const
{
    RpaSearchOptions searched;
    searched.text = GetText();
    searched.matchCase = caseBox->isChecked();
    searched.wholeWords = wordBox->isChecked();
    searched.inNames = namesBox->isChecked();
    searched.inTexts = textsBox->isChecked();
    searched.inNotes = notesBox->isChecked();
    return RpaProcessSearch(searched);
}

void ProcessFindPane::Find()
{
    if (!isVisible())
        return;
    places = edits ? Search().Find(*edits->Manager()) : QVector<RpaSearchPlace>();
    int found = 0;
    for (const RpaSearchPlace& place : qAsConst(places))
        found += place.begins.size();
    ShowCount(found);
    ShowPlaces();
}

void ProcessFindPane::ShowPlaces()
{
    QVector<ShownPlace> shown;
    shown.reserve(places.size());
    const bool replacing = !replaceRow->isHidden();
    for (const RpaSearchPlace& place : qAsConst(places)) {
        shown.append(PlaceTexts::Of(place));
        if (replacing)
            shown.last().after = After(place);
    }
    list->SetPlaces(shown);
}

QString ProcessFindPane::After(const RpaSearchPlace& place) const
{
    if (!edits)
        return QString();
    const RpaProcessSearch search = Search();
    const QString with = replace.lineEditReplaceEverywhere->text();
    const QString problem = search.Problem(*edits->Manager(), place, with);
    return problem.isEmpty() ? PlaceTexts::Excerpt(search.Replaced(place, with), place.begins.value(0))
                             : QStringLiteral("不替换：") + problem;
}

void ProcessFindPane::UpdateButtons()
{
    replace.replaceChosenButton->setEnabled(!list->SelectedRows().isEmpty());
    replace.replaceEverywhereButton->setEnabled(!places.isEmpty());
}

void ProcessFindPane::ReplaceChosen()
{
    QVector<RpaSearchPlace> chosen;
    const QVector<int> rows = list->SelectedRows();
    for (const int row : rows)
        chosen.append(places.at(row));
    Replace(chosen);
}

void ProcessFindPane::Replace(const QVector<RpaSearchPlace>& chosen)
{
    if (!edits)
        return;
    edits->EndTyping();
    const QString with = replace.lineEditReplaceEverywhere->text();
    const RpaProcessSearch search = Search();
    int left = 0;
    for (const RpaSearchPlace& place : chosen)
        left += search.Problem(*edits->Manager(), place, with).isEmpty() ? 0 : 1;
    const QVector<RpaStatementChange> changes = search.Replace(*edits->Manager(), chosen, with);
    edits->ChangeAll(changes, QStringLiteral("替换"));
    QString text = QStringLiteral("已修改 %1 个语句").arg(changes.size());
    if (left > 0)
        text += QStringLiteral("，%1 处没有替换，原因见列表").arg(left);
    WbToast::Show(text, left > 0 ? ToastWarning : ToastDone);
    Find();
}
