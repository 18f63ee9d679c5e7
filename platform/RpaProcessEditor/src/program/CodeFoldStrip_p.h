// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class CodeFolds;
class QPlainTextEdit;

// The triangles beside the lines that can be folded; a click folds and opens.
class CodeFoldStrip : public QWidget
{
    Q_OBJECT

public:
    static constexpr int width = 10;

    CodeFoldStrip(QPlainTextEdit* codeEdit, CodeFolds* codeFolds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void PaintTriangle(QPainter& painter, const QRectF& area, bool isFolded) const;

    QPlainTextEdit* const edit;
    CodeFolds* const folds;
};
