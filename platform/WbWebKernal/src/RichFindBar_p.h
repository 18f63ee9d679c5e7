#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QTextEdit;

// Finds text on the page: Enter next, Shift+Enter previous, Escape closes.
class RichFindBar : public QWidget
{
    Q_OBJECT

public:
    RichFindBar(QTextEdit* searched, QWidget* parent);

    // Shows the bar with the selected text, if any, ready to be typed over.
    void Open();
    void Close();

    void FindNext() { Find(false); }
    void FindPrevious() { Find(true); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SlotTextEdited();
    void Find(bool backward);
    void MarkAll();

    QTextEdit* view;
    QLineEdit* edit;
    QLabel* count;
};
