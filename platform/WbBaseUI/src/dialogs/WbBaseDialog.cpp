// SPDX-License-Identifier: Apache-2.0

#include "DialogTitleBar_p.h"
#include "DialogTurn_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbBaseDialog.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QFileDialog>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
constexpr int dialogFrameWidth = 1;

QRect AreaToCentreIn(const QDialog& dialog)
{
    const QWidget* parent = dialog.parentWidget() ? dialog.parentWidget()->window() : nullptr;
    if (parent && parent->isVisible())
        return parent->frameGeometry();
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}
} // namespace

class WbBaseDialog::Private
{
public:
    Private(WbBaseDialog* dialog, bool formTitle, bool closable, bool blocksApplication)
        : q(dialog), modal(blocksApplication), titleBar(new DialogTitleBar(formTitle, closable, dialog)),
          content(new WbBaseWidget(dialog)), layout(new QVBoxLayout(dialog))
    {
        // No object name: the derived class's form gives the content its own.
        content->setProperty("dialogContent", true);
        layout->setContentsMargins(dialogFrameWidth, dialogFrameWidth, dialogFrameWidth, dialogFrameWidth);
        layout->setSpacing(0);
        layout->addWidget(titleBar);
        layout->addWidget(content, 1);
    }

    // The form's own size is the design of the dialog; the layout alone would shrink it to the least it
    // needs.
    void TakeFormSize()
    {
        const bool formHasSize = content->testAttribute(Qt::WA_Resized);
        if (q->testAttribute(Qt::WA_Resized) || !formHasSize)
            return;
        const QSize designed(DpiTool::ScaleDefault(content->width()),
                             DpiTool::ScaleDefault(content->height()));
        const QSize wanted = designed.expandedTo(content->minimumSizeHint());
        q->resize(wanted + QSize(2 * dialogFrameWidth, titleBar->height() + 2 * dialogFrameWidth));
    }

    void MoveOverParent()
    {
        if (q->testAttribute(Qt::WA_Moved))
            return;
        const QRect over = AreaToCentreIn(*q);
        const QScreen* screen = QGuiApplication::screenAt(over.center());
        screen = screen ? screen : QGuiApplication::primaryScreen();
        QRect place(QPoint(), q->size());
        place.moveCenter(over.center());
        if (screen) {
            const QRect available = screen->availableGeometry();
            place.moveRight(qMin(place.right(), available.right()));
            place.moveBottom(qMin(place.bottom(), available.bottom()));
            place.moveLeft(qMax(place.left(), available.left()));
            place.moveTop(qMax(place.top(), available.top()));
        }
        q->move(place.topLeft());
    }

    WbBaseDialog* const q;
    const bool modal;
    DialogTitleBar* const titleBar;
    WbBaseWidget* const content;
    QVBoxLayout* const layout;
};

WbBaseDialog::WbBaseDialog(QWidget* parent, Qt::WindowFlags flags, int titleType, bool modal)
    : QDialog(parent, flags | Qt::Dialog | Qt::FramelessWindowHint),
      d(std::make_unique<Private>(this, titleType == 1, flags.testFlag(Qt::WindowCloseButtonHint), modal))
{
    connect(d->titleBar, &DialogTitleBar::SigClose, this, &QWidget::close);
    DpiTool::Register(this);
}

WbBaseDialog::~WbBaseDialog()
{
    DpiTool::Unregister(this);
    // Qt's own functions keep the file dialog on the stack of their caller, where it must not be freed as a
    // child; closed, it lets the caller go on without an answer.
    const auto fileDialogs = findChildren<QFileDialog*>(QString(), Qt::FindDirectChildrenOnly);
    for (QFileDialog* open : fileDialogs) {
        if (open->isVisible()) {
            open->setParent(nullptr);
            open->reject();
        }
    }
}

QWidget* WbBaseDialog::GetContentWidget() const
{
    return d->content;
}

void WbBaseDialog::SetTitle(const QString& title)
{
    setWindowTitle(title);
    d->titleBar->SetTitle(title);
}

void WbBaseDialog::AdjustForDpi()
{
    d->titleBar->AdjustForDpi();
}

void WbBaseDialog::OpenInTurn()
{
    DialogTurn::Open(this);
}

int WbBaseDialog::exec()
{
    if (!DialogTurn::Await(this))
        return Rejected;
    setWindowModality(d->modal ? Qt::ApplicationModal : Qt::WindowModal);
    return QDialog::exec();
}

void WbBaseDialog::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        ensurePolished();
        d->TakeFormSize();
        if (!testAttribute(Qt::WA_Resized))
            adjustSize();
        d->MoveOverParent();
    }
    QDialog::setVisible(visible);
}

void WbBaseDialog::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* const button = qobject_cast<QAbstractButton*>(focusWidget());
    const bool isPressed = qobject_cast<QPushButton*>(button) || qobject_cast<QToolButton*>(button);
    if (!isEnter || !isPressed || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        QDialog::keyPressEvent(event);
        return;
    }
    // QDialog would press the default button instead.
    if (!event->isAutoRepeat())
        button->click();
}

void WbBaseDialog::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
