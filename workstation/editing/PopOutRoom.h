#pragma once

#include <QObject>
#include <QPointer>

class IBrowserBorderWindow;
class QLayout;
class QWidget;

// Leaves the popped-out browser the room that it covers at the right edge of the page, so that it hides
// nothing of the editor. A window that the author has moved elsewhere, or has made so large that no editor
// would be left beside it, gets none.
class PopOutRoom : public QObject
{
    Q_OBJECT

public:
    // The page owns it; the layout is the page's, and its right margin is kept by this.
    PopOutRoom(QWidget* editorPage, QLayout* pageLayout);
    ~PopOutRoom() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int NeededRoom() const;
    void Arrange();

    QWidget* const page;
    QLayout* const layout;
    QPointer<IBrowserBorderWindow> browser;
};
