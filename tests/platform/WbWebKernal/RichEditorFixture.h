// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbWebKernal/WbRichEditor.h>

#include <QImage>
#include <QString>

class QMimeData;
class QTextEdit;

// A rich editor on the screen, used by keys and by the names of its actions.
namespace RichEditorFixture
{
QImage SomePicture(int width, int height);
QString DataUriOf(const QImage& image); // of its PNG

struct Editor
{
    Editor();

    void Press(const QString& action);
    void Type(const QString& text);
    void SelectAll();
    void Paste(QMimeData* data);
    QString Text() const { return widget.GetText(); }

    WbRichEditor widget;
    QTextEdit* view = nullptr;
};
} // namespace RichEditorFixture
