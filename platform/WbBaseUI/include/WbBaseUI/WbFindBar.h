// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;

// The bar that every editor opens with Ctrl+F: a text, the way to the next and the previous place, how many
// there are. It knows no document; its owner searches. Enter asks for the next place, Shift+Enter for the
// previous one, Escape closes. GUI thread.
class WBBASEUI_EXPORT WbFindBar : public QWidget
{
    Q_OBJECT

public:
    // prompt: what stands in the empty field.
    explicit WbFindBar(const QString& prompt, QWidget* parent = nullptr);

    // What is looked for, as it was typed.
    QString GetText() const;

    // Shows the bar with its text ready to be typed over. A text that is not empty and of one line takes the
    // place of the former one.
    void Open(const QString& text = QString());
    void Close();

    // As the buttons do.
    void FindNext() { emit SigFind(false); }
    void FindPrevious() { emit SigFind(true); }

    // Tells how many places were found; isMore: there are more than that. Nothing is told of an empty text.
    void ShowCount(int places, bool isMore = false);

    // Behind the ways to the next and previous place; takes ownership.
    void AddOption(QWidget* option);
    // Below the first row; takes ownership.
    void AddRow(QWidget* row);

signals:
    // Another text is looked for; the next or the previous place is asked for; the bar was closed.
    void SigTextChanged();
    void SigFind(bool backward);
    void SigClosed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLineEdit* edit;
    QLabel* count;
    QHBoxLayout* options;
};
