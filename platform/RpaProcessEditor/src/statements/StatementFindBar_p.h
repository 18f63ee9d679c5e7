// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbFindBar.h>

#include <QStringList>

class StatementView;

// Finds statements of the shown process by title, arguments, output and note.
class StatementFindBar : public WbFindBar
{
    Q_OBJECT

public:
    StatementFindBar(StatementView* searched, QWidget* parent = nullptr);

private:
    void SlotTextChanged();
    QStringList Matches() const;
    void Find(bool backward);

    StatementView* view;
};
