// SPDX-License-Identifier: Apache-2.0

#include "SampleOpener.h"

#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QSet>
#include <QStandardPaths>
#include <QtTest>

#include <chrono>
#include <cstdlib>

using namespace std::chrono_literals;

namespace
{
constexpr auto lookEvery = 50ms;
constexpr auto stepWithin = 60s;
constexpr QSize smallestWindow{720, 480};
constexpr int fewestColours = 100; // text alone has dozens of shades; an empty window has a few

const QString& SampleName()
{
    static const QString name = QStringLiteral("发票汇总示例");
    return name;
}

template <typename Widget>
Widget* Visible(const char* objectName)
{
    for (QWidget* top : QApplication::topLevelWidgets()) {
        for (auto* found : top->findChildren<Widget*>(QLatin1String(objectName)))
            if (found->isVisible())
                return found;
    }
    return nullptr;
}

void Note(const QString& line)
{
    QFile report(qEnvironmentVariable("RPA_PROGRAM_REPORT"));
    if (report.open(QIODevice::WriteOnly | QIODevice::Append))
        report.write(line.toUtf8() + '\n');
}

void ForgetEarlierStarts()
{
    QStandardPaths::setTestModeEnabled(true);
    for (const auto place : {QStandardPaths::AppLocalDataLocation, QStandardPaths::AppConfigLocation})
        QDir(QStandardPaths::writableLocation(place)).removeRecursively();
}

bool PressEnter()
{
    auto* enter = Visible<QAbstractButton>("buttonEnter");
    if (!enter || !enter->isEnabled())
        return false;
    QTest::mouseClick(enter, Qt::LeftButton);
    return true;
}

bool OpenSample()
{
    auto* list = Visible<QListView>("listApps");
    for (int row = 0; list && row < list->model()->rowCount(); ++row) {
        const QModelIndex card = list->model()->index(row, 0);
        if (card.data().toString() == SampleName()) {
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(card).center());
            return true;
        }
    }
    return false;
}

bool EditorShowsSample()
{
    const auto* editor = Visible<QWidget>("RpaAppEditorWidget");
    if (!editor)
        return false;
    const auto* status = editor->findChild<RequestStatusBaseWidget*>(QStringLiteral("requestStatusWidget"));
    const auto* name = Visible<QLabel>("labelName");
    const auto* version = Visible<QComboBox>("version_combo");
    return status && status->GetStatus() == RequestStatus::Succeeded && name &&
           name->text().contains(SampleName()) && version && version->lineEdit() &&
           !version->lineEdit()->text().isEmpty();
}

bool OpenProcessPage()
{
    auto* button = Visible<QWidget>("pushButtonProcess");
    if (!button)
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return Visible<QWidget>("pageProcess") != nullptr;
}

bool CloseWindow()
{
    Visible<QWidget>("RpaAppEditorWidget")->window()->close(); // asks first whether saves are on their way
    return true;
}

bool HasMoreColoursThan(const QImage& picture, int count)
{
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width() && colours.size() <= count; ++x)
            colours.insert(picture.pixel(x, y));
    return colours.size() > count;
}
} // namespace

SampleOpener::SampleOpener()
    : steps{{"sign in", &PressEnter},
            {"open the sample app", &OpenSample},
            {"the editor shows the sample app", &EditorShowsSample},
            {"its process", &OpenProcessPage},
            {"a picture of the window", [this] { return TakePicture(); }},
            {"close the window", &CloseWindow}}
{
    deadline.setSingleShot(true);
    connect(&looking, &QTimer::timeout, this, &SampleOpener::Look);
    connect(&deadline, &QTimer::timeout, this, [this] {
        Note(QStringLiteral("in vain: %1").arg(QLatin1String(steps.at(current).name)));
        std::_Exit(failureCode);
    });
    looking.start(lookEvery);
    deadline.start(stepWithin);
}

void SampleOpener::Look()
{
    if (!steps.at(current).isDone())
        return;
    Note(QStringLiteral("done: %1").arg(QLatin1String(steps.at(current).name)));
    deadline.start(stepWithin);
    if (++current == steps.size()) {
        looking.stop(); // the deadline now watches over the end of the program
        --current;
    }
}

// Of the screen, once two looks in a row see the same.
bool SampleOpener::TakePicture()
{
    const QWidget* window = Visible<QWidget>("RpaAppEditorWidget")->window();
    const QImage look = window->screen()->grabWindow(window->winId()).toImage();
    const bool isCalm = look == lastLook;
    lastLook = look;
    return isCalm && look.width() >= smallestWindow.width() && look.height() >= smallestWindow.height() &&
           HasMoreColoursThan(look, fewestColours) && look.save(qEnvironmentVariable("RPA_PROGRAM_PICTURE"));
}

QObject* SampleOpenerPlugin::create(const QString&, const QString&)
{
    ForgetEarlierStarts();
    return new SampleOpener; // the application owns what its plugins make
}
