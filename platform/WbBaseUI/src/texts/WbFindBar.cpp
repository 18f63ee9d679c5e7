// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbFindBar.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace
{
constexpr int editWidth = 280;
constexpr int findSideMargin = 8;
constexpr int rowMargin = 4;
constexpr int optionGap = 12;

QToolButton* AddButton(QHBoxLayout* row, const QString& icon, const QString& name, const QString& tip)
{
    auto* button = UIUtils::IconButton(name, icon, tip);
    row->addWidget(button);
    return button;
}
} // namespace

WbFindBar::WbFindBar(const QString& prompt, QWidget* parent)
    : QWidget(parent), edit(new WbLineEdit), count(new QLabel), options(new QHBoxLayout)
{
    edit->setObjectName(QStringLiteral("lineEditFind"));
    edit->setPlaceholderText(prompt);
    edit->setAccessibleName(prompt);
    edit->setClearButtonEnabled(true);
    edit->setMaximumWidth(DpiTool::ScaleDefault(editWidth));
    count->setObjectName(QStringLiteral("labelFindCount"));
    options->setSpacing(DpiTool::ScaleDefault(optionGap));

    auto* row = new QHBoxLayout;
    row->addWidget(edit);
    auto* previous = AddButton(row, QStringLiteral("chevron-up"), QStringLiteral("findPreviousButton"),
                               QStringLiteral("上一个（Shift+F3）"));
    auto* next = AddButton(row, QStringLiteral("chevron-down"), QStringLiteral("findNextButton"),
                           QStringLiteral("下一个（F3）"));
    row->addLayout(options);
    row->addSpacing(DpiTool::ScaleDefault(optionGap - findSideMargin));
    row->addWidget(count);
    row->addStretch();
    auto* close = AddButton(row, QStringLiteral("close"), QStringLiteral("findCloseButton"),
                            QStringLiteral("关闭（Esc）"));
    auto* layout = new QVBoxLayout(this);
    const int side = DpiTool::ScaleDefault(findSideMargin);
    const int above = DpiTool::ScaleDefault(rowMargin);
    layout->setContentsMargins(side, above, side, above);
    layout->setSpacing(above);
    layout->addLayout(row);

    connect(edit, &QLineEdit::textChanged, this, &WbFindBar::SigTextChanged);
    connect(previous, &QToolButton::clicked, this, &WbFindBar::FindPrevious);
    connect(next, &QToolButton::clicked, this, &WbFindBar::FindNext);
    connect(close, &QToolButton::clicked, this, &WbFindBar::Close);
    hide();
}

QString WbFindBar::GetText() const
{
    return edit->text();
}

void WbFindBar::Open(const QString& text)
{
    if (!text.isEmpty() && !text.contains(QChar::ParagraphSeparator) && !text.contains(QLatin1Char('\n')))
        edit->setText(text);
    show();
    edit->setFocus();
    edit->selectAll();
}

void WbFindBar::Close()
{
    hide();
    emit SigClosed();
}

void WbFindBar::ShowCount(int places, bool isMore)
{
    if (edit->text().isEmpty())
        count->clear();
    else if (places == 0)
        count->setText(QStringLiteral("没有找到"));
    else
        count->setText(
            QStringLiteral("共 %1 处%2").arg(places).arg(isMore ? QStringLiteral("以上") : QString()));
}

void WbFindBar::AddOption(QWidget* option)
{
    options->addWidget(option);
}

void WbFindBar::AddRow(QWidget* row)
{
    layout()->addWidget(row);
}

void WbFindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit SigFind(event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    case Qt::Key_Escape:
        Close();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}
