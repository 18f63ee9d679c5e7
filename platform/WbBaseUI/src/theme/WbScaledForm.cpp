// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QFormLayout>
#include <QGridLayout>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace
{
int Scaled(int length)
{
    return length >= QWIDGETSIZE_MAX ? length : DpiTool::ScaleDefault(length);
}

QSize Scaled(const QSize& size)
{
    return {Scaled(size.width()), Scaled(size.height())};
}

struct LayoutDesign
{
    explicit LayoutDesign(QLayout* design) : layout(design), margins(design->contentsMargins())
    {
        spacing = QSize(design->spacing(), design->spacing());
        if (const auto* grid = qobject_cast<QGridLayout*>(design))
            spacing = QSize(grid->horizontalSpacing(), grid->verticalSpacing());
        else if (const auto* form = qobject_cast<QFormLayout*>(design))
            spacing = QSize(form->horizontalSpacing(), form->verticalSpacing());
    }

    void Apply() const
    {
        layout->setContentsMargins(Scaled(margins.left()), Scaled(margins.top()), Scaled(margins.right()),
                                   Scaled(margins.bottom()));
        if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
            grid->setHorizontalSpacing(Scaled(spacing.width()));
            grid->setVerticalSpacing(Scaled(spacing.height()));
        } else if (auto* form = qobject_cast<QFormLayout*>(layout)) {
            form->setHorizontalSpacing(Scaled(spacing.width()));
            form->setVerticalSpacing(Scaled(spacing.height()));
        } else {
            layout->setSpacing(Scaled(spacing.width()));
        }
    }

    QPointer<QLayout> layout;
    QMargins margins;
    QSize spacing; // across and down
};

struct WidgetDesign
{
    explicit WidgetDesign(QWidget* design)
        : widget(design), least(design->minimumSize()), most(design->maximumSize())
    {
    }

    void Apply() const
    {
        widget->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX); // or it would stand in the other's way
        widget->setMinimumSize(Scaled(least));
        widget->setMaximumSize(Scaled(most));
    }

    QPointer<QWidget> widget;
    QSize least;
    QSize most;
};

class Design
{
public:
    explicit Design(QWidget* form)
    {
        AddSize(form);
        AddChildren(*form);
    }

    void Apply() const
    {
        for (const LayoutDesign& design : layouts)
            if (design.layout)
                design.Apply();
        for (const WidgetDesign& design : widgets)
            if (design.widget)
                design.Apply();
    }

private:
    void AddChildren(const QWidget& parent)
    {
        const auto ownLayouts = parent.findChildren<QLayout*>(QString(), Qt::FindDirectChildrenOnly);
        for (QLayout* layout : ownLayouts)
            AddLayout(layout);
        const auto children = parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (QWidget* child : children)
            AddWidget(child);
    }

    void AddLayout(QLayout* layout)
    {
        layouts.emplace_back(layout);
        const auto inner = layout->findChildren<QLayout*>(QString(), Qt::FindDirectChildrenOnly);
        for (QLayout* child : inner)
            AddLayout(child);
    }

    void AddWidget(QWidget* widget)
    {
        if (widget->isWindow() || dynamic_cast<IDpiAdapter*>(widget) ||
            widget->findChild<DpiFollower*>(QString(), Qt::FindDirectChildrenOnly))
            return;
        AddSize(widget);
        if (IsContainer(*widget))
            AddChildren(*widget);
    }

    void AddSize(QWidget* widget)
    {
        const QSize most(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        if (!widget->minimumSize().isNull() || widget->maximumSize() != most)
            widgets.emplace_back(widget);
    }

    // Made by the form to hold parts of it; other classes look after what they hold.
    static bool IsContainer(const QWidget& widget)
    {
        const char* const names[] = {"QWidget",     "WbBaseWidget",   "QFrame",   "QGroupBox",
                                     "QScrollArea", "QStackedWidget", "QSplitter"};
        for (const char* name : names)
            if (qstrcmp(widget.metaObject()->className(), name) == 0)
                return true;
        return false;
    }

    std::vector<LayoutDesign> layouts;
    std::vector<WidgetDesign> widgets;
};
} // namespace

void WbScaledForm::Follow(QWidget* form)
{
    DpiFollower::Follow(form, [design = Design(form)] { design.Apply(); });
}
