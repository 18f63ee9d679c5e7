#include "UIPartPanel.h"

#include <WbBaseUI/WbLabel.h>

#include <QToolButton>
#include <QVBoxLayout>

UIPartPanel::UIPartPanel(QWidget* parent)
    : WbBaseWidget(parent), header(new QToolButton(this)), content(new WbLabel(this))
{
    header->setObjectName(QStringLiteral("buttonShrink"));
    header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    header->setAutoRaise(true);
    header->setCheckable(true);
    header->setChecked(true);
    header->setArrowType(Qt::DownArrow);
    header->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    content->setObjectName(QStringLiteral("labelContent"));
    content->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    content->setWordWrap(true);
    content->setIndent(8);
    content->setTextInteractionFlags(Qt::TextSelectableByMouse);
    content->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(header);
    layout->addWidget(content);

    connect(header, &QToolButton::toggled, this, &UIPartPanel::OnHeaderToggled);
}

UIPartPanel::~UIPartPanel() = default;

void UIPartPanel::SetTexts(const QString& newTitle, const QString& newEmptyText)
{
    title = newTitle;
    emptyText = newEmptyText;
    SetLines({});
}

void UIPartPanel::SetLines(const QStringList& lines)
{
    header->setText(lines.isEmpty() ? title : QStringLiteral("%1（%2）").arg(title).arg(lines.size()));
    content->setText(lines.isEmpty() ? emptyText : lines.join(QLatin1Char('\n')));
}

bool UIPartPanel::IsShrink() const
{
    return !header->isChecked();
}

void UIPartPanel::OnHeaderToggled(bool expanded)
{
    header->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
    content->setVisible(expanded);
    emit SigShrinkChanged();
}
