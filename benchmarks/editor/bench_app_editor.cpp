// SPDX-License-Identifier: Apache-2.0

// Constructing and first showing the editor, as opening its tab in a workstation does.

#include "FrameTimes.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>

#include <memory>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    constexpr int rounds = 15;
    QVector<double> constructed;
    QVector<double> shown;
    for (int i = 0; i < rounds; ++i) {
        std::unique_ptr<RpaAppEditorWidget> editor;
        constructed << FrameTimes::Measure([&] { editor = std::make_unique<RpaAppEditorWidget>(); });
        editor->resize(1400, 900);
        shown << FrameTimes::Measure([&] { editor->show(); });
        if (i == 0) {
            FrameTimes::PrintTime("construct, first of the process", constructed.first());
            FrameTimes::PrintTime("show, first of the process", shown.first());
        }
    }
    FrameTimes::Print("construct", FrameTimes::Of(constructed));
    FrameTimes::Print("show", FrameTimes::Of(shown));
    return 0;
}
