// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EditorFixture.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>

// An author who writes a program, with real keys in a real window.
class CodeAuthor
{
public:
    // A loaded machine may need long for a Python with jedi.
    static constexpr int patienceMs = 100 * 1000;

    // The cursor stands at "|", or else at the end.
    explicit CodeAuthor(QString text)
    {
        const int cursor = text.indexOf(QLatin1Char('|'));
        if (cursor >= 0)
            text.remove(cursor, 1);
        app = EditorFixture::App();
        EditorFixture::Main(app)->SetProgramText(text);
        app->SetModified(false);
        page.resize(900, 500);
        page.SetRpaAppData(app);
        page.show();
        page.activateWindow();
        if (!QTest::qWaitForWindowActive(&page))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
        edit = page.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
        edit->setFocus();
        QTextCursor place = edit->textCursor();
        place.setPosition(cursor >= 0 ? cursor : text.size());
        edit->setTextCursor(place);
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(edit, key, modifiers);
    }
    void Write(const QString& text) { EditorFixture::Type(edit, text); }

    QString Text() const { return edit->toPlainText(); }
    QString TextBeforeCursor() const { return Text().left(edit->textCursor().position()); }

    QListView* List() const { return edit->findChild<QListView*>(QStringLiteral("completionList")); }
    bool IsListShown() const { return List()->isVisible(); }
    QStringList Offered() const
    {
        QStringList names;
        for (int row = 0; IsListShown() && row < List()->model()->rowCount(); ++row)
            names.append(List()->model()->index(row, 0).data().toString());
        return names;
    }
    bool Offers(const QString& name) const { return Offered().contains(name); }
    QString Selected() const { return IsListShown() ? List()->currentIndex().data().toString() : QString(); }
    QString Hint() const
    {
        const auto* hint = edit->findChild<QLabel*>(QStringLiteral("completionHint"));
        return hint->isVisible() ? hint->text() : QString();
    }
    QLabel* Tip() const { return edit->findChild<QLabel*>(QStringLiteral("signatureTip")); }

    RpaAppDataPtr app;
    ProcessProgramEditorWidget page;
    QPlainTextEdit* edit = nullptr;
};
