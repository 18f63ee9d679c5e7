// SPDX-License-Identifier: Apache-2.0

#include "WidgetAccessibility_p.h"

#include <WbBaseUI/WbIconButtonWidget.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>

namespace
{
class IconButtonAccessible : public QAccessibleWidget
{
public:
    explicit IconButtonAccessible(WbIconButtonWidget* button)
        : QAccessibleWidget(button, QAccessible::PageTab)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString given = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && given.isEmpty() ? Button()->GetLabelText()->text() : given;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = Button()->bSelected;
        return state;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && widget()->isEnabled())
            emit Button()->SigClicked();
    }

private:
    WbIconButtonWidget* Button() const { return static_cast<WbIconButtonWidget*>(widget()); }
};

QAccessibleInterface* CreateInterface(const QString&, QObject* object)
{
    auto* button = qobject_cast<WbIconButtonWidget*>(object);
    return button ? new IconButtonAccessible(button) : nullptr;
}
} // namespace

void InstallWidgetAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(CreateInterface);
        return true;
    }();
    Q_UNUSED(installed)
}
