#pragma once

#include <QTextDocument>
#include <QWidget>

class CodeEdit;
class QCheckBox;
class QLabel;
class QLineEdit;

// Find and replace in the code: Enter next, Shift+Enter previous, Escape closes.
class CodeFindBar : public QWidget
{
    Q_OBJECT

public:
    CodeFindBar(CodeEdit* searched, QWidget* parent);

    // With the selected text, if it is one line.
    void Open(bool withReplace);
    void Close();
    void FindNext() { Find(false); }
    void FindPrevious() { Find(true); }
    void ReplaceAll();
    void ReplaceCurrent();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SlotChanged();
    void Find(bool backward);
    void MarkAll();
    QTextDocument::FindFlags Flags() const;

    CodeEdit* edit;
    QLineEdit* findEdit;
    QLineEdit* replaceEdit;
    QCheckBox* caseBox;
    QCheckBox* wordBox;
    QLabel* count;
    QWidget* replaceRow;
};
