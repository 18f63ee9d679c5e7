// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFrame>

class WbLabel;

// One sentence on what to do first here, below the page, so that it covers nothing of it.
class TipBar : public QFrame
{
    Q_OBJECT

public:
    explicit TipBar(QWidget* parent = nullptr);

    void Tell(const QString& tip);

signals:
    // The reader has read it.
    void SigDone();
    // The reader wants no more tips.
    void SigNoMore();

private:
    WbLabel* text = nullptr;
};
