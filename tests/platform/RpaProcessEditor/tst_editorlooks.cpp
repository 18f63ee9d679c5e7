// SPDX-License-Identifier: Apache-2.0

#include "ColorContrast.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

// Distances and contrasts of the visual editor, measured on the screen.
class tst_EditorLooks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyLabelKeepsTheSameDistanceFromItsField();
    void aMessageBelongsToTheFieldAboveIt();
    void toolsInARowOfTheirOwnTouchNothing();
    void aCommentedOutStatementIsRead_data();
    void aCommentedOutStatementIsRead();
};

namespace
{
QRect PlaceOf(const QWidget& part, const QWidget& within)
{
    return {part.mapTo(&within, QPoint()), part.size()};
}

qreal BestContrast(const QImage& image, const QRect& place, const QColor& ground)
{
    qreal best = 1;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            best = qMax(best, ColorContrast(image.pixelColor(x, y), ground));
    return best;
}
} // namespace

void tst_EditorLooks::init()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void tst_EditorLooks::cleanup()
{
    qApp->setStyleSheet(QString());
}

void tst_EditorLooks::everyLabelKeepsTheSameDistanceFromItsField()
{
    RpaStatement read = Statement(QStringLiteral("t-read"), QStringLiteral("r"));
    Editor editor({read});
    editor.Click(QStringLiteral("r"));
    const auto* content = editor.Find<QWidget>(QStringLiteral("propertyContent"));
    QVERIFY(content);
    QTRY_VERIFY(content->isVisible());
    QVERIFY(editor.Field<QLineEdit>(QStringLiteral("path"))); // with a button in the row of its label
    const auto distance = [content](const QString& title, const QWidget* field) {
        for (const QLabel* label : content->findChildren<QLabel*>())
            if (label->text().startsWith(title))
                return PlaceOf(*field, *content).top() - PlaceOf(*label, *content).center().y();
        return -1;
    };

    const int ofArgument = distance(QStringLiteral("文件"), editor.Field<QLineEdit>(QStringLiteral("path")));
    const int ofOutput =
        distance(QStringLiteral("内容保存到变量"), editor.Find<QWidget>(QStringLiteral("lineEditOutput")));
    const int ofNote = distance(QStringLiteral("备注"), editor.Find<QWidget>(QStringLiteral("textEditNote")));
    QVERIFY(ofOutput > 0);
    QVERIFY(qAbs(ofArgument - ofOutput) <= 1); // the field stands in the middle of a row with a button
    QCOMPARE(ofNote, ofOutput);
}

void tst_EditorLooks::aMessageBelongsToTheFieldAboveIt()
{
    Editor editor({Statement(QStringLiteral("t-set"), QStringLiteral("s"))});
    editor.Click(QStringLiteral("s"));
    const auto* content = editor.Find<QWidget>(QStringLiteral("propertyContent"));
    QTRY_VERIFY(content->isVisible());
    const auto* first = editor.Find<QWidget>(QStringLiteral("field_variable"));
    const auto* message = first->findChild<QLabel*>(QStringLiteral("labelProblem"));
    QVERIFY(message->isVisible());
    const auto* next = editor.Find<QWidget>(QStringLiteral("field_value"));

    const QRect said = PlaceOf(*message, *content);
    const QRect field = PlaceOf(*editor.Field<QWidget>(QStringLiteral("variable")), *content);
    const int above = said.top() - field.bottom() - 1;
    const int below = PlaceOf(*next, *content).top() - said.bottom() - 1;

    QVERIFY(above >= 0);
    QVERIFY2(below >= 3 * qMax(1, above),
             qPrintable(QStringLiteral("%1 above, %2 below").arg(above).arg(below)));
}

void tst_EditorLooks::toolsInARowOfTheirOwnTouchNothing()
{
    Editor editor;
    editor.widget.resize(760, 520);
    const auto* tools = editor.Find<QWidget>(QStringLiteral("processToolBar"));
    const auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTRY_VERIFY(PlaceOf(*tools, editor.widget).top() >= PlaceOf(*tabs, editor.widget).bottom());

    const QRect row = PlaceOf(*tools, editor.widget);
    QVERIFY(row.top() - PlaceOf(*tabs, editor.widget).bottom() - 1 >= 4);
    QVERIFY(PlaceOf(*editor.view, editor.widget).top() - row.bottom() - 1 >= 4);
}

void tst_EditorLooks::aCommentedOutStatementIsRead_data()
{
    QTest::addColumn<int>("scheme");
    QTest::addColumn<int>("column");
    for (const int column : {0, 1}) {
        const char* const part = column == 0 ? "number" : "card";
        QTest::addRow("%s, light", part) << int(WbTheme::Scheme::Light) << column;
        QTest::addRow("%s, dark", part) << int(WbTheme::Scheme::Dark) << column;
    }
}

void tst_EditorLooks::aCommentedOutStatementIsRead()
{
    QFETCH(int, scheme);
    QFETCH(int, column);
    WbTheme::Instance()->Apply(WbTheme::Scheme(scheme));
    RpaStatement out = Log(QStringLiteral("a"));
    out.enabled = false;
    Editor editor({out});
    editor.Click(QStringLiteral("a"));
    QVERIFY(editor.view->selectionModel()->hasSelection());

    QRect place = editor.view->visualRect(editor.IndexOf(QStringLiteral("a"), column));
    if (column == 1)
        place.adjust(54, 6, -60, -6); // the texts: behind the tile, before the card's edge
    const QImage picture = editor.view->viewport()->grab().toImage();
    const QColor ground = WbTheme::Instance()->Color(column == 1 ? WbColor::Selection : WbColor::Field);
    const qreal contrast = BestContrast(picture, place, ground);

    QVERIFY2(contrast >= 4.5, qPrintable(QString::number(contrast)));
}

RPA_TEST_MAIN(tst_EditorLooks)

#include "tst_editorlooks.moc"
