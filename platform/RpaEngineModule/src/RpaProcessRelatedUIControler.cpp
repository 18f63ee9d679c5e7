// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <algorithm>

namespace
{
// isEnabled() would also be false because of a disabled parent, and the widget would stay disabled for ever.
bool IsEnabledItself(const QWidget* widget)
{
    return !widget->testAttribute(Qt::WA_ForceDisabled);
}
} // namespace

RpaProcessRelatedUIControler* RpaProcessRelatedUIControler::Instance()
{
    static RpaProcessRelatedUIControler instance;
    return &instance;
}

void RpaProcessRelatedUIControler::AddToControl(QPointer<QWidget> widget)
{
    const auto isKnown = [&widget](const Controlled& entry) { return entry.widget == widget; };
    if (!widget || std::any_of(controlled.cbegin(), controlled.cend(), isKnown))
        return;

    Controlled entry;
    entry.widget = widget;
    entry.enabledBefore = IsEnabledItself(widget);
    controlled.append(entry);
    if (running)
        widget->setEnabled(false);
}

void RpaProcessRelatedUIControler::RemoveFromControl(QPointer<QWidget> widget)
{
    for (int i = controlled.size() - 1; i >= 0; --i) {
        const Controlled entry = controlled.at(i);
        if (entry.widget && entry.widget != widget)
            continue;
        controlled.removeAt(i);
        if (running && entry.widget)
            entry.widget->setEnabled(entry.enabledBefore);
    }
}

void RpaProcessRelatedUIControler::SetRunning(bool isRunning)
{
    if (running == isRunning)
        return;
    running = isRunning;
    for (Controlled& entry : controlled) {
        if (!entry.widget)
            continue;
        if (running)
            entry.enabledBefore = IsEnabledItself(entry.widget);
        entry.widget->setEnabled(!running && entry.enabledBefore);
    }
}

bool RpaProcessRelatedUIControler::IsRunning() const
{
    return running;
}
