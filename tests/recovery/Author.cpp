// SPDX-License-Identifier: Apache-2.0

#include "Author.h"

#include <WbBaseUI/UIMain.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPainter>
#include <QSocketNotifier>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace
{
constexpr int lookEveryMs = 20;
const QString versionText = QStringLiteral("rpa_version_combo_text");

QWidget* Find(const QString& name)
{
    QWidget* const modal = QApplication::activeModalWidget();
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == name && widget->isVisible() && widget->isEnabled() &&
            (!modal || widget == modal || modal->isAncestorOf(widget)))
            return widget;
    return nullptr;
}

QTextEdit* Instructions()
{
    QWidget* const page = Find(QStringLiteral("textEditManual"));
    return page ? page->findChild<QTextEdit*>() : nullptr;
}

// The editor is shown once there is a list of versions, the drop-down filled once there is an app.
bool IsLoaded()
{
    const auto* combo = qobject_cast<QComboBox*>(Find(QStringLiteral("version_combo")));
    return combo && combo->lineEdit() && !combo->lineEdit()->text().isEmpty();
}

// Later: a press may open a dialog, and the next act is wanted while that is open.
void Press(QWidget* widget, const QPoint& place)
{
    QWidget* const child = widget->childAt(place);
    QWidget* const target = child ? child : widget;
    const QPoint inTarget = target->mapFrom(widget, place);
    QTimer::singleShot(0, target,
                       [target, inTarget] { QTest::mouseClick(target, Qt::LeftButton, {}, inTarget); });
}

QModelIndex CardOf(const QString& app)
{
    const auto* list = qobject_cast<QListView*>(Find(QStringLiteral("listApps")));
    for (int row = 0; list && row < list->model()->rowCount(); ++row) {
        const QModelIndex index = list->model()->index(row, 0);
        if (index.data().toString() == app)
            return index;
    }
    return {};
}

bool Sees(const QString& text)
{
    const QWidgetList widgets = QApplication::allWidgets();
    return std::any_of(widgets.begin(), widgets.end(), [&](const QWidget* widget) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        return label && label->isVisible() && label->text().contains(text);
    });
}

bool Press(QWidget* widget)
{
    if (widget)
        Press(widget, widget->rect().center());
    return widget != nullptr;
}

// Of the window, and of the dialog on it.
bool TakePicture(const QString& file)
{
    QWidget* const window = QApplication::activeModalWidget();
    QWidget* const main = UIMain::Instance()->GetMainWidget(nullptr);
    if (!main)
        return false;
    QPixmap picture = main->grab();
    if (window) {
        QPainter painter(&picture);
        painter.drawPixmap(main->mapFromGlobal(window->mapToGlobal(QPoint())), window->grab());
    }
    return picture.save(file);
}

QWidget* ButtonOfModal(const QString& text)
{
    const QWidget* const modal = QApplication::activeModalWidget();
    const auto buttons = modal ? modal->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == text)
            return button;
    return nullptr;
}
} // namespace

Author::Author(QObject* parent) : QObject(parent)
{
    auto* notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &Author::SlotInput);
}

void Author::SlotInput()
{
    char bytes[4096];
    const ssize_t size = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (size <= 0)
        ::_exit(0);
    input.append(bytes, static_cast<int>(size));
    for (int end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
        acts.append(QString::fromUtf8(input.left(end)));
        input.remove(0, end + 1);
        if (acts.size() == 1)
            TryNext();
    }
}

void Author::TryNext()
{
    const QString act = acts.first().section(QLatin1Char(' '), 0, 0);
    QString answer;
    if (!Try(act, acts.first().section(QLatin1Char(' '), 1), &answer)) {
        QTimer::singleShot(lookEveryMs, this, &Author::TryNext);
        return;
    }
    acts.removeFirst();
    std::printf("ok %s\n", qUtf8Printable(answer.simplified()));
    std::fflush(stdout);
    if (!acts.isEmpty())
        QTimer::singleShot(0, this, &Author::TryNext);
}

bool Author::Try(const QString& act, const QString& rest, QString* answer)
{
    if (act == QLatin1String("open"))
        return Open(rest);
    if (act == QLatin1String("listed"))
        return CardOf(rest).isValid();
    if (act == QLatin1String("click"))
        return Press(Find(rest));
    if (act == QLatin1String("answer"))
        return Press(ButtonOfModal(rest));
    if (act == QLatin1String("type"))
        return Type(rest);
    if (act == QLatin1String("read"))
        return Read(rest, answer);
    if (act == QLatin1String("until"))
        return Read(rest.section(QLatin1Char(' '), 0, 0), answer) &&
               *answer == rest.section(QLatin1Char(' '), 1);
    if (act == QLatin1String("dismiss"))
        return Dismiss();
    if (act == QLatin1String("sees"))
        return Sees(rest);
    if (act == QLatin1String("fill"))
        return Fill(rest.section(QLatin1Char(' '), 0, 0), rest.section(QLatin1Char(' '), 1));
    if (act == QLatin1String("gone"))
        return !Find(rest);
    if (act == QLatin1String("switch"))
        return Switch(rest);
    if (act == QLatin1String("picture"))
        return TakePicture(rest);
    if (act == QLatin1String("instructions") && IsLoaded() && Instructions()) {
        *answer = Instructions()->toPlainText();
        return true;
    }
    return false;
}

bool Author::Open(const QString& app)
{
    auto* const list = qobject_cast<QListView*>(Find(QStringLiteral("listApps")));
    const QModelIndex card = CardOf(app);
    if (!list || !card.isValid())
        return false;
    Press(list->viewport(), list->visualRect(card).center());
    return true;
}

bool Author::Type(const QString& text)
{
    QTextEdit* const edit = IsLoaded() ? Instructions() : nullptr;
    if (!edit)
        return false;
    QTest::mouseClick(edit->viewport(), Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClicks(edit, text);
    return true;
}

bool Author::Fill(const QString& name, const QString& text)
{
    QWidget* const widget = Find(name);
    auto* edit = qobject_cast<QLineEdit*>(widget);
    if (widget && !edit)
        edit = widget->findChild<QLineEdit*>();
    if (!edit)
        return false;
    edit->selectAll();
    QTest::keyClicks(edit, text);
    return true;
}

bool Author::Dismiss()
{
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal)
        QTimer::singleShot(0, modal, [modal] { QTest::keyClick(modal, Qt::Key_Escape); });
    return modal != nullptr;
}

bool Author::Read(const QString& name, QString* text)
{
    QWidget* const widget = Find(name);
    if (const auto* label = qobject_cast<QLabel*>(widget))
        *text = label->text();
    else if (const auto* button = qobject_cast<QAbstractButton*>(widget))
        *text = button->text();
    else if (const auto* combo = qobject_cast<QComboBox*>(widget))
        *text = combo->lineEdit() ? combo->lineEdit()->text() : combo->currentText();
    return widget != nullptr;
}

// As often as it takes: a release soon after the press that opened the list counts as that press's.
bool Author::Switch(const QString& version)
{
    auto* const combo = qobject_cast<QComboBox*>(Find(QStringLiteral("version_combo")));
    if (QApplication::activeModalWidget() || (combo && combo->lineEdit()->text() == version))
        return true;
    auto* const list = qobject_cast<QListWidget*>(Find(QStringLiteral("VersionComboBoxView")));
    for (int row = 0; list && row < list->count(); ++row) {
        QListWidgetItem* const item = list->item(row);
        const QLabel* const label = list->itemWidget(item)->findChild<QLabel*>(versionText);
        if (label && label->text() == version)
            Press(list->viewport(), list->visualItemRect(item).center());
    }
    if (!list)
        Press(combo);
    return false;
}
