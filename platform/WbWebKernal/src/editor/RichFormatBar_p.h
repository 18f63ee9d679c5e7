// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTextListFormat>
#include <QToolBar>

#include <functional>

class QComboBox;
class QMenu;
class QToolButton;
class RichTextView;

// The buttons over the page. Shows how the text at the cursor is formatted and formats the selection.
class RichFormatBar : public QToolBar
{
    Q_OBJECT

public:
    RichFormatBar(RichTextView* edited, QWidget* shortcutScope);

    // Reads the formats at the cursor.
    void Refresh();

    // Asks for a link for the selection or the link at the cursor.
    void EditLink();

signals:
    void SigFindAsked();

private:
    using Act = std::function<void()>;

    QAction* Add(const char* icon, const QString& name, const QString& text, const QKeySequence& keys,
                 const Act& act);
    QAction* AddToggle(const char* icon, const QString& name, const QString& text, const QKeySequence& keys,
                       const Act& act);
    void AddHeadings();
    void AddInlineFormats();
    void AddParagraphFormats();
    void AddInsertions();
    void AddEditing();
    void AddColourMenu(const char* icon, const QString& name, const QString& text, bool background);
    QAction* AddAlignment(QMenu& menu, const char* icon, const QString& name, const QString& text,
                          Qt::Key key, Qt::Alignment alignment);
    QToolButton* AddMenu(const char* icon, const QString& name, const QString& text, QMenu* menu);
    void ConnectView();

    void MergeInline(const QTextCharFormat& format);
    void ApplyColour(const QColor& colour, bool background);
    void InsertPictureFromFile();

    RichTextView* view;
    QWidget* scope;
    QComboBox* heading = nullptr;
    QAction* bold = nullptr;
    QAction* italic = nullptr;
    QAction* underline = nullptr;
    QAction* strike = nullptr;
    QAction* bullets = nullptr;
    QAction* numbers = nullptr;
    QAction* left = nullptr;
    QAction* centre = nullptr;
    QAction* right = nullptr;
    QToolButton* alignButton = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
};
