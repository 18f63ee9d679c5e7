// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"

#include <QAction>
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QTest>
#include <QTextEdit>

namespace RichEditorFixture
{
namespace
{
QByteArray PngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
} // namespace

QImage SomePicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(60, 130, 246));
    QPainter painter(&image);
    painter.fillRect(0, 0, width / 2, height / 2, QColor(232, 115, 12));
    return image;
}

QString DataUriOf(const QImage& image)
{
    return QLatin1String("data:image/png;base64,") + QString::fromLatin1(PngOf(image).toBase64());
}

Editor::Editor()
{
    widget.resize(873, 463);
    widget.show();
    view = widget.findChild<QTextEdit*>(QStringLiteral("richTextView"));
    view->setFocus();
    widget.activateWindow();
    if (!QTest::qWaitForWindowActive(&widget))
        QTest::qFail("the window never became active", __FILE__, __LINE__);
}

void Editor::Press(const QString& action)
{
    widget.findChild<QAction*>(action)->trigger();
}

void Editor::Type(const QString& text)
{
    QTest::keyClicks(view, text);
}

void Editor::SelectAll()
{
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
}

void Editor::Paste(QMimeData* data)
{
    QGuiApplication::clipboard()->setMimeData(data);
    QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
}
} // namespace RichEditorFixture
