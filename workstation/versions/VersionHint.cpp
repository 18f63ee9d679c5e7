// SPDX-License-Identifier: Apache-2.0

#include "VersionHint.h"

#include "VersionController.h"
#include "VersionDetails.h"
#include "ui_VersionHint.h"

#include <OxBase/DpiTool.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>

namespace
{
constexpr int hintWidth = 300;
constexpr int mostWidth = 420; // for a name that would be broken
constexpr int gap = 6;
constexpr int hintedSaves = 3;
} // namespace

VersionHint::VersionHint(QComboBox* combo, VersionController* versionController, DateLanguage language)
    : QFrame(combo->parentWidget(), Qt::ToolTip | Qt::FramelessWindowHint), box(combo), list(combo->view()),
      field(combo->lineEdit()), desk(versionController), dateLanguage(language),
      details(new VersionDetails(hintedSaves))
{
    Ui::VersionHint ui;
    ui.setupUi(this);
    ui.layoutHint->insertWidget(0, details);
    labelUsers = ui.labelUsersHave;
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_StyledBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    qApp->installEventFilter(this);
    connect(combo->view()->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &VersionHint::ShowRow);
    connect(desk, &VersionController::SigChanged, this, &VersionHint::Update);
}

QComboBox* VersionHint::Versions() const
{
    return qobject_cast<QComboBox*>(box.data());
}

QAbstractItemView* VersionHint::View() const
{
    return qobject_cast<QAbstractItemView*>(list.data());
}

QLineEdit* VersionHint::Name() const
{
    return qobject_cast<QLineEdit*>(field.data());
}

bool VersionHint::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Enter:
        if (watched->isWidgetType() && !IsGoing())
            FollowList(*static_cast<QWidget*>(watched), event->type());
        return false;
    case QEvent::ToolTip:
        return (watched == box || watched == field) && !IsGoing() && ShowCurrent();
    case QEvent::Leave:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::WindowDeactivate:
        if (list && !list->isVisible())
            hide();
        return false;
    default:
        return false;
    }
}

void VersionHint::FollowList(const QWidget& widget, QEvent::Type what)
{
    const QAbstractItemView* const view = View();
    const QWidget* const sight = view->viewport();
    if (what == QEvent::Hide && (&widget == view || &widget == box)) {
        hide();
    } else if (what == QEvent::Show && &widget == view) {
        desk->Load();
        // Later: the list has not found its place yet.
        QMetaObject::invokeMethod(
            this, [this] { ShowRow(View() ? View()->currentIndex() : QModelIndex()); }, Qt::QueuedConnection);
    } else if (what == QEvent::Enter && view->isVisible() && sight->isAncestorOf(&widget)) {
        ShowRow(view->indexAt(widget.mapTo(sight, widget.rect().center())));
    }
}

void VersionHint::ShowRow(const QModelIndex& index)
{
    if (IsGoing() || !View()->isVisible() || !index.isValid())
        return;
    row = index.row();
    Update();
    setVisible(!details->isHidden());
}

bool VersionHint::ShowCurrent()
{
    if (View()->isVisible())
        return false;
    desk->Load();
    row = -1;
    Update();
    setVisible(!details->isHidden());
    return isVisible();
}

void VersionHint::Update()
{
    if (IsGoing())
        return;
    const QVector<VersionFacts> all = desk->GetVersions();
    // An app that has only released versions shows one more, which is not saved yet.
    const int index = row - (Versions()->count() - all.size());
    const VersionFacts version = row < 0 ? desk->FindShown(Name()->text()) : all.value(index);
    details->setVisible(!version.id.isEmpty());
    if (version.id.isEmpty()) {
        hide();
        return;
    }
    const QString progress = desk->IsLoading() ? QStringLiteral("正在读取保存记录…") : desk->GetProblem();
    details->Show(version, progress, dateLanguage);
    const bool isKnown = !desk->IsLoading() && desk->GetProblem().isEmpty();
    labelUsers->setText(VersionWords::UsersHave(desk->GetReleases()));
    labelUsers->setVisible(isKnown || !desk->GetReleases().isEmpty());
    // Fonts come with the style, and with them the size.
    for (QWidget* part : findChildren<QWidget*>()) {
        part->ensurePolished();
        part->updateGeometry();
    }
    FitSize();
    Place();
}

QRect VersionHint::Beside() const
{
    return row < 0 ? QRect(box->mapToGlobal(QPoint()), box->size()) : View()->window()->frameGeometry();
}

// Wide enough for who saved it and when in one line, where there is room beside the list.
void VersionHint::FitSize()
{
    const QSize frame = size() - contentsRect().size();
    const QMargins margins = layout()->contentsMargins();
    int wanted = 0;
    for (const auto* save : details->findChildren<QLabel*>(QStringLiteral("labelVersionSave")))
        wanted = qMax(wanted, save->fontMetrics().horizontalAdvance(save->text()) + margins.left() +
                                  margins.right() + frame.width() + 1);
    const QRect room = box->screen()->availableGeometry();
    const QRect beside = Beside();
    const int spare = qMax(room.right() - beside.right(), beside.left() - room.left()) - gap;
    wanted = qMin(wanted, qMin(DpiTool::ScaleDefault(mostWidth), row < 0 ? room.width() : spare));
    setFixedWidth(qMax(wanted, DpiTool::ScaleDefault(hintWidth)));
    layout()->invalidate();
    setFixedHeight(layout()->heightForWidth(width() - frame.width()) + frame.height());
}

// Beside the list, where there is more room, and clear of the buttons in the row of the box; below the closed
// box.
void VersionHint::Place()
{
    const QRect beside = Beside();
    const QRect room = box->screen()->availableGeometry();
    QPoint place(beside.left(), beside.bottom() + 1 + gap);
    if (row >= 0) {
        const int right = beside.right() + 1 + gap;
        const int left = beside.left() - gap - width();
        const bool fitsRight = right + width() <= room.right() + 1;
        const int under = box->mapToGlobal(QPoint(0, box->height())).y() + gap;
        const bool isAbove = beside.bottom() < under;
        place = {fitsRight ? right : left, isAbove ? beside.top() : qMax(beside.top(), under)};
    }
    place.setX(qBound(room.left(), place.x(), qMax(room.left(), room.right() + 1 - width())));
    place.setY(qBound(room.top(), place.y(), qMax(room.top(), room.bottom() + 1 - height())));
    move(place);
}
