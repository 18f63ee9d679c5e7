// SPDX-License-Identifier: Apache-2.0

#include "PaneFolder.h"
#include "TestApp.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QtTest>

namespace
{
// The browser pane of an editor: a browser with a button that folds it, or a strip with one that unfolds it.
class NarrowingEditor : public QWidget
{
public:
    NarrowingEditor()
    {
        auto* layout = new QHBoxLayout(this);
        for (QWidget* part : {pane, strip})
            layout->addWidget(part);
        pane->setObjectName(QStringLiteral("browserPane"));
        fold->setObjectName(QStringLiteral("browserFold"));
        unfold->setObjectName(QStringLiteral("pushButtonUnfold"));
        strip->hide();
        connect(fold, &QPushButton::clicked, this, [this] { Show(false); });
        connect(unfold, &QPushButton::clicked, this, [this] { Show(true); });
    }

    bool IsFolded() const { return pane->isHidden() && !strip->isHidden(); }

    QWidget* const pane = new QWidget;
    QWidget* const strip = new QWidget;
    QPushButton* const fold = new QPushButton(pane);
    QPushButton* const unfold = new QPushButton(strip);

private:
    void Show(bool open)
    {
        pane->setVisible(open);
        strip->setVisible(!open);
    }
};
} // namespace

class tst_PaneFolder : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void foldsInANarrowEditorAndUnfoldsInAWideOne();
    void keepsFoldedWhatTheAuthorFolded();
    void keepsOpenWhatTheAuthorOpened();
    void leavesAPoppedOutBrowserAlone();

private:
    void Widen(int width) { editor->resize(width, 400); }

    std::unique_ptr<NarrowingEditor> editor;
};

void tst_PaneFolder::init()
{
    editor = std::make_unique<NarrowingEditor>();
    new PaneFolder(editor.get());
    Widen(1280);
    editor->show();
}

void tst_PaneFolder::foldsInANarrowEditorAndUnfoldsInAWideOne()
{
    QVERIFY(!editor->IsFolded());

    Widen(1279);
    QVERIFY(editor->IsFolded());
    Widen(1280);
    QVERIFY(!editor->IsFolded());
    Widen(960);
    QVERIFY(editor->IsFolded());
}

void tst_PaneFolder::keepsFoldedWhatTheAuthorFolded()
{
    editor->fold->click();

    Widen(960);
    Widen(1400);

    QVERIFY(editor->IsFolded());
}

void tst_PaneFolder::keepsOpenWhatTheAuthorOpened()
{
    Widen(960);

    editor->unfold->click();
    Widen(1000);
    QVERIFY(!editor->IsFolded());
    editor->fold->click();
    Widen(1400);

    QVERIFY(editor->IsFolded());
}

void tst_PaneFolder::leavesAPoppedOutBrowserAlone()
{
    editor->fold->hide();

    Widen(960);

    QVERIFY(!editor->IsFolded());
}

RPA_TEST_MAIN(tst_PaneFolder)
#include "tst_panefolder.moc"
