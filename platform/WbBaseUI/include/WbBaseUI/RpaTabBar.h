// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QStringList>
#include <QWidget>

#include <memory>

// A bar of named tabs with the gestures to add, rename, delete and move them. The bar asks before deleting
// and never deletes the last tab; it only announces gestures, the owner then calls the operation that carries
// one out.
class WBBASEUI_EXPORT RpaTabBar : public QWidget
{
    Q_OBJECT

public:
    explicit RpaTabBar(QWidget* parent = nullptr);
    ~RpaTabBar() override;

    // Replaces all tabs and makes the first one current; emits nothing.
    void Initialize(const QStringList& names);

    // Appends a tab and makes it current (SigTabChanged).
    void AddTab(const QString& name);

    // When the current tab is removed, the tab after it (at the end: before it) becomes current first;
    // SigTabChanged announces it with the index it has at that moment, while both sides still hold the tab to
    // be removed. The removal itself is silent, so GetCurrentIndex() may be smaller by one afterwards.
    void RemoveTab(int index);

    // An index outside the bar does nothing; nothing is emitted.
    void SetTabText(int index, const QString& name);

    // Exchanges two tabs; the current tab stays the same tab (its index may change), nothing is emitted.
    void SwapTab(int from, int to);

    // -1 without tabs.
    int GetCurrentIndex() const;

signals:
    // Another tab is current.
    void SigTabChanged(int index);
    // The user asked for a new tab, for the deletion (and confirmed it) or for another name of one.
    void SigAddTab();
    void SigDeleteTab(int index);
    void SigRenameTab(int index);
    // The user dragged a tab: the bar has it at its new place already.
    void SigTabMoved(int from, int to);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
