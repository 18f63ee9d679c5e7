// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <QBuffer>
#include <QMimeData>
#include <QTest>
#include <QTextEdit>
#include <QUrl>
#include <QtEndian>

using namespace RichEditorFixture;

// Pictures stand in the text itself, as data.
class tst_WbRichEditorPictures : public QObject
{
    Q_OBJECT

private slots:
    void insertsAPictureFromTheClipboardAsData();
    void scalesALargePictureDown();
    void takesADroppedPictureFileIn();
    void refusesAPictureThatClaimsTooManyPixels();
    void copiesPicturesWithTheirData();
};

void tst_WbRichEditorPictures::insertsAPictureFromTheClipboardAsData()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setImageData(SomePicture(40, 20));

    editor.Paste(data);

    QVERIFY(editor.Text().startsWith(QLatin1String("<p><img src=\"data:image/png;base64,")));
    QVERIFY(editor.Text().endsWith(QLatin1String("\" width=\"40\" height=\"20\"></p>")));
}

void tst_WbRichEditorPictures::scalesALargePictureDown()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setImageData(SomePicture(5000, 2500));

    editor.Paste(data);

    const QString text = editor.Text();
    const int comma = text.indexOf(QLatin1Char(','));
    const int end = text.indexOf(QLatin1Char('"'), comma);
    const QImage kept =
        QImage::fromData(QByteArray::fromBase64(text.mid(comma + 1, end - comma - 1).toLatin1()));
    QCOMPARE(kept.size(), QSize(1600, 800));
    QVERIFY(text.contains(QLatin1String("width=\"640\" height=\"320\"")));
}

void tst_WbRichEditorPictures::takesADroppedPictureFileIn()
{
    TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("图.png"));
    QVERIFY(SomePicture(40, 20).save(path));
    Editor editor;
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(path)});

    editor.Paste(data);

    QVERIFY(editor.Text().contains(QLatin1String("<img src=\"data:image/png;base64,")));
    QVERIFY(!editor.Text().contains(QLatin1String("file:")));
}

void tst_WbRichEditorPictures::refusesAPictureThatClaimsTooManyPixels()
{
    QByteArray bitmap;
    QBuffer buffer(&bitmap);
    buffer.open(QIODevice::WriteOnly);
    SomePicture(2, 2).save(&buffer, "BMP");
    const auto pretend = [&bitmap](qint32 side) {
        const qint32 length = qToLittleEndian(side);
        bitmap.replace(18, 4, reinterpret_cast<const char*>(&length), 4); // width
        bitmap.replace(22, 4, reinterpret_cast<const char*>(&length), 4); // height
        return QStringLiteral("<p>x<img src=\"data:image/bmp;base64,%1\">y</p>")
            .arg(QString::fromLatin1(bitmap.toBase64()));
    };
    Editor editor;

    editor.widget.Init(pretend(2));
    QVERIFY(editor.view->toPlainText().contains(QChar(QChar::ObjectReplacementCharacter)));

    editor.widget.Init(pretend(40000));
    QCOMPARE(editor.view->toPlainText(), QStringLiteral("xy"));
}

void tst_WbRichEditorPictures::copiesPicturesWithTheirData()
{
    Editor editor;
    const QString html = QStringLiteral("<p>x<img src=\"%1\" width=\"20\" height=\"10\"></p>")
                             .arg(DataUriOf(SomePicture(40, 20)));
    editor.widget.Init(html);

    editor.SelectAll();
    QTest::keyClick(editor.view, Qt::Key_C, Qt::ControlModifier);
    Editor second;
    QTest::keyClick(second.view, Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(second.Text(), html);
}

RPA_TEST_MAIN(tst_WbRichEditorPictures)

#include "tst_wbricheditor_pictures.moc"
