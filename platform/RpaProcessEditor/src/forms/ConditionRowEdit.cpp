// SPDX-License-Identifier: Apache-2.0

#include "ConditionRowEdit_p.h"
#include "ValueEdit_p.h"
#include "ValueField_p.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbComboBox.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
struct Comparison
{
    RpaComparison comparison;
    const char* title;
};

constexpr Comparison comparisons[] = {
    {RpaComparison::Equal, "等于"},        {RpaComparison::NotEqual, "不等于"},
    {RpaComparison::Greater, "大于"},      {RpaComparison::GreaterOrEqual, "大于等于"},
    {RpaComparison::Less, "小于"},         {RpaComparison::LessOrEqual, "小于等于"},
    {RpaComparison::Contains, "包含"},     {RpaComparison::ContainsNot, "不包含"},
    {RpaComparison::IsIn, "属于"},         {RpaComparison::IsNotIn, "不属于"},
    {RpaComparison::StartsWith, "开头是"}, {RpaComparison::EndsWith, "结尾是"},
    {RpaComparison::IsEmpty, "没有内容"},  {RpaComparison::IsNotEmpty, "有内容"},
    {RpaComparison::IsNone, "是空值"},     {RpaComparison::IsNotNone, "不是空值"},
    {RpaComparison::Holds, "成立"},        {RpaComparison::HoldsNot, "不成立"},
};
} // namespace

ConditionRowEdit::ConditionRowEdit(const FieldOffers& offers, QWidget* parent)
    : QFrame(parent), join(new WbComboBox), first(new QLabel(QStringLiteral("当"))),
      left(new ValueField(offers, QStringLiteral("比较的值"))), comparison(new WbComboBox),
      right(new ValueField(offers, QStringLiteral("与之比较的值")))
{
    setObjectName(QStringLiteral("conditionRow"));
    setFrameShape(QFrame::NoFrame);
    join->setObjectName(QStringLiteral("joinCombo"));
    join->setAccessibleName(QStringLiteral("与上一行的关系"));
    join->addItems({QStringLiteral("并且"), QStringLiteral("或者")});
    left->setObjectName(QStringLiteral("leftValue"));
    right->setObjectName(QStringLiteral("rightValue"));
    comparison->setObjectName(QStringLiteral("comparisonCombo"));
    comparison->setAccessibleName(QStringLiteral("比较"));
    for (const Comparison& known : comparisons)
        comparison->addItem(QString::fromUtf8(known.title), int(known.comparison));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(BuildTop());
    layout->addWidget(left);
    layout->addWidget(comparison);
    layout->addWidget(right);
    AddKeys();
    connect(join, qOverload<int>(&QComboBox::activated), this, &ConditionRowEdit::SigEdited);
    connect(comparison, qOverload<int>(&QComboBox::activated), this, &ConditionRowEdit::ShowRight);
    connect(comparison, qOverload<int>(&QComboBox::activated), this, &ConditionRowEdit::SigEdited);
    for (ValueField* value : {left, right}) {
        connect(value, &ValueField::SigEdited, this, &ConditionRowEdit::SigEdited);
        connect(value, &ValueField::SigFinished, this, &ConditionRowEdit::SigFinished);
    }
}

QWidget* ConditionRowEdit::BuildTop()
{
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(first);
    layout->addWidget(join);
    layout->addStretch();
    up = UIUtils::IconButton(QStringLiteral("rowUp"), QStringLiteral("move-up"),
                             QStringLiteral("上移（Alt+↑）"));
    down = UIUtils::IconButton(QStringLiteral("rowDown"), QStringLiteral("move-down"),
                               QStringLiteral("下移（Alt+↓）"));
    remove = UIUtils::IconButton(QStringLiteral("rowRemove"), QStringLiteral("delete"),
                                 QStringLiteral("删除这一行（Ctrl+Delete）"));
    for (QToolButton* button : {up, down, remove})
        layout->addWidget(button);
    connect(up, &QToolButton::clicked, this, [this] { emit SigMoveAsked(-1); });
    connect(down, &QToolButton::clicked, this, [this] { emit SigMoveAsked(1); });
    connect(remove, &QToolButton::clicked, this, &ConditionRowEdit::SigRemoveAsked);
    return top;
}

void ConditionRowEdit::AddKeys()
{
    const auto key = [this](int code) {
        auto* shortcut = new QShortcut(QKeySequence(code), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        return shortcut;
    };
    connect(key(Qt::ALT + Qt::Key_Up), &QShortcut::activated, up, &QToolButton::click);
    connect(key(Qt::ALT + Qt::Key_Down), &QShortcut::activated, down, &QToolButton::click);
    connect(key(Qt::CTRL + Qt::Key_Delete), &QShortcut::activated, remove, &QToolButton::click);
    connect(key(Qt::CTRL + Qt::Key_Return), &QShortcut::activated, this, &ConditionRowEdit::SigAddAsked);
}

void ConditionRowEdit::SetRow(const RpaConditionRow& row)
{
    join->setCurrentIndex(row.isOr ? 1 : 0);
    left->SetValue(row.left);
    comparison->setCurrentIndex(comparison->findData(int(row.comparison)));
    right->SetValue(row.right);
    ShowRight();
    ShowMissing(false);
}

RpaConditionRow ConditionRowEdit::Row() const
{
    const auto kind = RpaComparison(comparison->currentData().toInt());
    // What was written to the right is kept for the time being, in case the comparison changes back.
    const bool uses = RpaCondition::HasRight(kind);
    return {join->currentIndex() == 1 && !join->isHidden(), left->Value(), kind,
            uses ? right->Value() : RpaValue()};
}

void ConditionRowEdit::ShowRight()
{
    right->setVisible(RpaCondition::HasRight(RpaComparison(comparison->currentData().toInt())));
}

void ConditionRowEdit::SetPlace(int index, int count)
{
    first->setVisible(index == 0);
    join->setVisible(index > 0);
    up->setEnabled(index > 0);
    down->setEnabled(index + 1 < count);
    left->Edit()->setAccessibleName(QStringLiteral("第 %1 行：比较的值").arg(index + 1));
    right->Edit()->setAccessibleName(QStringLiteral("第 %1 行：与之比较的值").arg(index + 1));
}

void ConditionRowEdit::ShowMissing(bool shown)
{
    const RpaConditionRow row = Row();
    left->SetMissing(shown && row.left.IsEmpty());
    right->SetMissing(shown && RpaCondition::HasRight(row.comparison) && row.right.IsEmpty());
}

void ConditionRowEdit::FocusValue()
{
    left->setFocus();
}
