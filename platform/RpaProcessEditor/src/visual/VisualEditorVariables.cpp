// SPDX-License-Identifier: Apache-2.0

// Variables get another name in the visual editor.
#include "StatementView_p.h"
#include "VariableRenameDialog_p.h"
#include "VisualEditorParts_p.h"

#include <WbBaseUI/WbToast.h>

void VisualEditorParts::AskVariableName()
{
    if (!edits)
        return;
    edits->EndTyping();
    const QPointer<ProcessEdits> asked(edits.get());
    // The editor may go away, or show another app, while the name is chosen.
    const QPointer<VariableRenameDialog> dialog =
        new VariableRenameDialog(*edits->Manager(), view->Statements()->NodeOf(view->currentIndex()), host);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString from = dialog->From();
    const QString to = dialog->To();
    delete dialog;
    if (!isAccepted || !asked)
        return;
    const int places = asked->RenameVariable(from, to);
    WbToast::Show(QStringLiteral("“%1”已改名为“%2”，共修改 %3 处").arg(from, to).arg(places), ToastDone);
}

void VisualEditorParts::SlotVariableFollowed(const QString& from, const QString& to, int places)
{
    WbToast::Show(QStringLiteral("“%1”已改名为“%2”，一并修改了 %3 处使用").arg(from, to).arg(places),
                  ToastDone);
}
