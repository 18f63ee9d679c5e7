// SPDX-License-Identifier: Apache-2.0

#include "LivingWorkstation.h"

#include "AppListPage.h"
#include "MainWindow.h"
#include "ModalDriver.h"

#include <WbBaseUI/UIMain.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

namespace
{
constexpr int patienceMs = 30000;

template <typename Condition>
bool Until(Condition condition)
{
    return QTest::qWaitFor(condition, patienceMs);
}
} // namespace

LivingWorkstation::LivingWorkstation() = default;

LivingWorkstation::~LivingWorkstation() = default;

MainWindow* LivingWorkstation::Window() const
{
    return workstation->GetWindow();
}

bool LivingWorkstation::Start()
{
    workstation = std::make_unique<Workstation>(WorkstationPaths::Below(home.path()));
    QString problem;
    if (!workstation->Start(&problem)) {
        qCritical("%s", qPrintable(problem));
        return false;
    }
    Window()->setMinimumSize(1, 1); // the screen of a test may be smaller
    Window()->resize(1280, 720);
    Window()->activateWindow();
    if (!Until([] {
            const auto* enter = ShownAs<QPushButton>("buttonEnter");
            return enter && enter->isEnabled();
        }) ||
        !TabTo("buttonEnter"))
        return false;
    Key(Qt::Key_Return);
    return Until([] {
        const auto* cards = ShownAs<QListView>("listApps");
        return cards && cards->isEnabled() && cards->hasFocus() && cards->model()->rowCount() > 0;
    });
}

void LivingWorkstation::End()
{
    QSignalSpy closed(workstation.get(), &Workstation::SigClosed);
    Window()->close();
    QTRY_COMPARE_WITH_TIMEOUT(closed.size(), 1, patienceMs);
    workstation.reset();
}

bool LivingWorkstation::CreateApp(const QString& name)
{
    ModalDriver modals{std::chrono::milliseconds(patienceMs)};
    modals.Then([&name](QWidget*) {
        Until([] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr; });
        Write(name);
        Key(Qt::Key_Return);
    });
    modals.Then([](QWidget*) { Key(Qt::Key_Escape); }); // begins empty, from no template
    Key(Qt::Key_N, Qt::ControlModifier);
    Window()->activateWindow(); // which a window manager does by itself
    return Until([&modals] { return modals.GetPendingCount() == 0 && Shown("editorWidget"); });
}

bool LivingWorkstation::AddStatement(const QString& title)
{
    Key(Qt::Key_2, Qt::ControlModifier);
    if (!Until([] { return HasFocus("statementView"); }))
        return false;
    Key(Qt::Key_Return);
    if (!Until([] { return HasFocus("lineEditQuickPick"); }))
        return false;
    Write(title);
    Key(Qt::Key_Return);
    Window()->activateWindow(); // which a window manager does by itself
    return Until([] { return !QApplication::activePopupWidget() && HasFocus("statementView"); });
}

QWidget* LivingWorkstation::Shown(const char* name)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets)
        if (widget->objectName() == QLatin1String(name) && widget->isVisible())
            return widget;
    return nullptr;
}

void LivingWorkstation::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const QWidget* top = QApplication::activePopupWidget();
    top = top ? top : QApplication::activeModalWidget();
    if (!top && !QApplication::activeWindow()) {
        // After a dialog the keyboard goes back by itself where there is a window manager.
        UIMain::Instance()->GetMainWidget(nullptr)->activateWindow();
        QCoreApplication::processEvents();
    }
    top = top ? top : QApplication::activeWindow();
    QVERIFY(top && top->windowHandle());
    const QPointer<QWindow> window = top->windowHandle();
    QTest::keyPress(window, key, modifiers);
    if (window) // the press may have closed it
        QTest::keyRelease(window, key, modifiers);
}

void LivingWorkstation::Write(const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
}

bool LivingWorkstation::HasFocus(const char* name)
{
    const QWidget* focus = QApplication::focusWidget();
    return focus && focus->objectName() == QLatin1String(name);
}

bool LivingWorkstation::TabTo(const char* name)
{
    constexpr int most = 200;
    for (int count = 0; count < most && !HasFocus(name); ++count)
        Key(Qt::Key_Tab);
    return HasFocus(name);
}
