// SPDX-License-Identifier: Apache-2.0

#include "Monkey.h"

#include "MonkeySight.h"
#include "WindowEvents.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTimer>

namespace
{
constexpr int mostPauseMs = 3;
constexpr int mostActsOutside = 1000;
// A server takes thirty tries a minute; more would shut the monkey out for the rest of it.
constexpr qint64 pauseBetweenSignInsMs = 2500;

struct KeyChoice
{
    int key;
    Qt::KeyboardModifiers modifiers;
};

const KeyChoice keys[] = {
    {Qt::Key_Tab, {}},
    {Qt::Key_Tab, {}},
    {Qt::Key_Backtab, Qt::ShiftModifier},
    {Qt::Key_Return, {}},
    {Qt::Key_Return, {}},
    {Qt::Key_Escape, {}},
    {Qt::Key_Space, {}},
    {Qt::Key_Delete, {}},
    {Qt::Key_Backspace, {}},
    {Qt::Key_Up, {}},
    {Qt::Key_Down, {}},
    {Qt::Key_Left, {}},
    {Qt::Key_Right, {}},
    {Qt::Key_Home, {}},
    {Qt::Key_End, {}},
    {Qt::Key_PageUp, {}},
    {Qt::Key_PageDown, {}},
    {Qt::Key_F2, {}},
    {Qt::Key_F3, {}},
    {Qt::Key_F5, {}},
    {Qt::Key_Menu, {}},
    {Qt::Key_Insert, {}},
    {Qt::Key_Up, Qt::AltModifier},
    {Qt::Key_Down, Qt::AltModifier},
};
const int controlKeys[] = {Qt::Key_A, Qt::Key_B, Qt::Key_C, Qt::Key_D,     Qt::Key_E,    Qt::Key_F,
                           Qt::Key_G, Qt::Key_H, Qt::Key_I, Qt::Key_K,     Qt::Key_N,    Qt::Key_R,
                           Qt::Key_S, Qt::Key_T, Qt::Key_U, Qt::Key_V,     Qt::Key_X,    Qt::Key_Y,
                           Qt::Key_Z, Qt::Key_Z, Qt::Key_0, Qt::Key_Slash, Qt::Key_Home, Qt::Key_End};

// Nothing that leads out of a folder.
const QString texts[] = {QStringLiteral("a"),       QStringLiteral("abc"),       QStringLiteral("0"),
                         QStringLiteral("42"),      QStringLiteral("x y"),       QStringLiteral("主流程"),
                         QStringLiteral("发票"),    QStringLiteral("日志"),      QStringLiteral("="),
                         QStringLiteral("=x+1"),    QStringLiteral("print(1)"),  QStringLiteral("等待"),
                         QStringLiteral("界面"),    QStringLiteral("如果"),      QStringLiteral("𠮷"),
                         QStringLiteral("<b>&lt;"), QStringLiteral("2026-02-29")};
} // namespace

Monkey::Monkey(quint32 seed, const QString& files, std::function<void(const QString&)> teller)
    : random(seed), folder(files), tell(std::move(teller))
{
}

void Monkey::Start(const QStringList& known, const QString& word)
{
    accounts = known;
    password = word;
    active = true;
    Later();
}

// A timer of its own each time: a dialog that an act opens has an event loop within that act, and the monkey
// goes on in there.
void Monkey::Later()
{
    QTimer::singleShot(UpTo(mostPauseMs), this, &Monkey::Act);
}

void Monkey::Act()
{
    if (!active)
        return;
    Later();
    ++count;
    emit SigActed();
    if (active) {
        if (QWidget* window = MonkeySight::WindowInUse(UpTo(99))) {
            const QString place = MonkeySight::PlaceOf(window);
            ++places[place];
            const bool isOut = place.startsWith(QLatin1String("SignInPage"));
            actsOutside = isOut ? actsOutside + 1 : 0;
            if (actsOutside > mostActsOutside)
                GoAway(window);
            else
                ActIn(window);
        }
    }
}

void Monkey::ActIn(QWidget* window)
{
    if (AnswerFileDialog(window) || (Sometimes(8) && SignIn()) || (Sometimes(4) && OpenAnApp()) ||
        (Sometimes(4) && LeaveSettings()))
        return;
    const int choice = UpTo(999);
    if (choice < 620) {
        ClickSomething(window);
    } else if (choice < 680) {
        Drag(window);
    } else if (choice < 830) {
        PressKey(window);
    } else if (choice < 930) {
        TypeSomething(window);
    } else if (choice < 965) {
        QWidget* const over = PickWidget(window);
        Tell("wheel", over);
        WindowEvents::Wheel(window, PlaceIn(over), Sometimes(50) ? 15 : -15);
    } else if (choice < 985) {
        QWidget* const over = PickWidget(window);
        WindowEvents::Move(window, PlaceIn(over), Qt::NoButton);
    } else if (choice < 990) {
        window->resize(1280 + UpTo(500), 720 + UpTo(300));
    } else if (window->isModal() || choice == 999) {
        Tell("close", window);
        WindowEvents::Close(window);
    }
}

// Nobody lets it in here, or it chose a server that there is not: another workstation may do better.
void Monkey::GoAway(QWidget* window)
{
    Tell("go away", window);
    WindowEvents::Close(window);
}

// The dialog of the system shows the whole machine.
bool Monkey::AnswerFileDialog(QWidget* window)
{
    auto* files = qobject_cast<QFileDialog*>(window->window());
    if (!files)
        return false;
    Tell("choose a file", files);
    if (Sometimes(50)) {
        files->reject();
    } else {
        files->setDirectory(folder);
        files->selectFile(folder + QStringLiteral("/file%1.csv").arg(UpTo(2)));
        static_cast<QDialog*>(files)->done(QDialog::Accepted);
    }
    return true;
}

bool Monkey::SignIn()
{
    auto* account = MonkeySight::Find<QLineEdit>("editAccount");
    auto* word = MonkeySight::Find<QLineEdit>("editPassword");
    auto* enter = MonkeySight::Find<QAbstractButton>("buttonEnter");
    const bool isSoon = sinceSignIn.isValid() && sinceSignIn.elapsed() < pauseBetweenSignInsMs;
    if (!account || !word || !enter || !enter->isEnabled() || isSoon)
        return false;
    sinceSignIn.start();
    Tell("sign in", enter);
    // The first one has the samples.
    account->setText(Sometimes(50) ? accounts.first() : accounts.at(UpTo(accounts.size() - 1)));
    word->setText(password);
    WindowEvents::Click(enter->window(), PlaceIn(enter));
    return true;
}

bool Monkey::OpenAnApp()
{
    const auto* cards = MonkeySight::Find<QListView>("listApps");
    const int apps = cards ? cards->model()->rowCount() : 0;
    if (apps == 0)
        return false;
    const QRect card = cards->visualRect(cards->model()->index(UpTo(apps - 1), 0));
    Tell("open an app", cards);
    WindowEvents::Click(cards->window(), cards->viewport()->mapToGlobal(card.center()));
    return true;
}

// There is more to do elsewhere.
bool Monkey::LeaveSettings()
{
    auto* back = MonkeySight::Find<QAbstractButton>("buttonBack");
    if (!back || !MonkeySight::Find<QWidget>("SettingsPage"))
        return false;
    Tell("leave the settings", back);
    WindowEvents::Click(back->window(), PlaceIn(back));
    return true;
}

void Monkey::ClickSomething(QWidget* window)
{
    QWidget* const target = PickWidget(window);
    const int kind = UpTo(99);
    if (kind < 84) {
        Tell("click", target);
        WindowEvents::Click(window, PlaceIn(target));
    } else if (kind < 92) {
        Tell("double click", target);
        WindowEvents::DoubleClick(window, PlaceIn(target));
    } else {
        Tell("right click", target);
        WindowEvents::Click(window, PlaceIn(target), Qt::RightButton);
    }
}

void Monkey::Drag(QWidget* window)
{
    QWidget* const from = PickWidget(window);
    QWidget* const to = Sometimes(50) ? from : PickWidget(window);
    Tell("drag", from, MonkeySight::NameOf(to));
    const QPoint start = PlaceIn(from);
    const QPoint end = PlaceIn(to);
    WindowEvents::Press(window, start, Qt::LeftButton);
    for (int step = 1; step <= 4; ++step)
        WindowEvents::Move(window, start + (end - start) * step / 4, Qt::LeftButton);
    WindowEvents::Release(window, end, Qt::LeftButton);
}

void Monkey::PressKey(QWidget* window)
{
    if (Sometimes(35)) {
        const int key = controlKeys[UpTo(int(std::size(controlKeys)) - 1)];
        const auto shift = Sometimes(20) ? Qt::ShiftModifier : Qt::NoModifier;
        Tell("key", QApplication::focusWidget(), QStringLiteral("Ctrl+%1").arg(key, 0, 16));
        WindowEvents::Key(window, key, Qt::ControlModifier | shift);
        return;
    }
    const KeyChoice& key = keys[UpTo(int(std::size(keys)) - 1)];
    Tell("key", QApplication::focusWidget(), QString::number(key.key, 16));
    const QString text = key.key == Qt::Key_Return  ? QStringLiteral("\r")
                         : key.key == Qt::Key_Space ? QStringLiteral(" ")
                                                    : QString();
    WindowEvents::Key(window, key.key, key.modifiers, text);
}

void Monkey::TypeSomething(QWidget* window)
{
    const QString& text = texts[UpTo(int(std::size(texts)) - 1)];
    Tell("type", QApplication::focusWidget(), text);
    WindowEvents::Type(window, text);
}

void Monkey::Tell(const char* act, const QWidget* widget, const QString& detail)
{
    tell(QStringLiteral("%1 %2 %3 %4")
             .arg(count)
             .arg(QLatin1String(act), MonkeySight::NameOf(widget), detail));
}

int Monkey::UpTo(int most)
{
    return most <= 0 ? 0 : int(random() % quint32(most + 1));
}

QWidget* Monkey::PickWidget(QWidget* window)
{
    const QList<QWidget*> likely = MonkeySight::Inviting(window);
    if (likely.isEmpty() || Sometimes(8))
        return window;
    return likely.at(UpTo(likely.size() - 1));
}

QPoint Monkey::PlaceIn(const QWidget* widget)
{
    const QRect seen = widget->visibleRegion().boundingRect();
    return widget->mapToGlobal(seen.topLeft() + QPoint(UpTo(seen.width() - 1), UpTo(seen.height() - 1)));
}
