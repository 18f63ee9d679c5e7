#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class QLineEdit;
class StatementView;

// Finds statements of the shown process by title, arguments, output and note: Enter next, Shift+Enter
// previous, Escape closes.
class StatementFindBar : public QWidget
{
    Q_OBJECT

public:
    StatementFindBar(StatementView* searched, QWidget* parent = nullptr);

    void Open();
    void Close();
    void FindNext() { Find(1); }
    void FindPrevious() { Find(-1); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SlotTextChanged();
    QStringList Matches() const;
    void Find(int direction);

    StatementView* view;
    QLineEdit* edit;
    QLabel* count;
};
