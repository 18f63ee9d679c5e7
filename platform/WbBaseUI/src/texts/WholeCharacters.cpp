// SPDX-License-Identifier: Apache-2.0

#include "WholeCharacters_p.h"

#include <QLineEdit>

namespace
{
// -1: none.
int FindHalf(const QString& text)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool isWhole =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (!isWhole)
            return i;
        ++i;
    }
    return -1;
}

// Every step tells of another change, which looks again.
void RemoveHalf(QLineEdit* line, int half, const QString& before)
{
    if (!line->isRedoAvailable()) {
        line->setSelection(half, 1);
        line->del();
        return;
    }
    // The author goes back or forth over an earlier removal; staying here would bar the way.
    const bool isBack = line->text().remove(half, 1) == before;
    if (isBack)
        line->undo();
    else
        line->redo();
}
} // namespace

void WholeCharacters::Keep(QLineEdit* line)
{
    QObject::connect(line, &QLineEdit::textChanged, line,
                     [line, before = line->text()](const QString& text) mutable {
                         const int half = FindHalf(text);
                         if (half >= 0)
                             RemoveHalf(line, half, before);
                         before = line->text();
                     });
}
