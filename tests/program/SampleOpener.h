// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QGenericPlugin>
#include <QImage>
#include <QTimer>

#include <functional>
#include <vector>

// Does in the real program, from inside, what its user does: signs in, opens the sample app in the editor,
// closes the window. The program knows nothing of it; Qt loads it when QT_QPA_GENERIC_PLUGINS names it. The
// program gets the folders of a first start. RPA_PROGRAM_PICTURE names the file for a picture of the window
// with the editor, RPA_PROGRAM_REPORT that for a line per step; a step that does not come about ends the
// program with failureCode.
class SampleOpener : public QObject
{
    Q_OBJECT

public:
    static constexpr int failureCode = 3;

    SampleOpener();

private:
    struct Step
    {
        const char* name;
        std::function<bool()> isDone;
    };

    void Look();
    bool TakePicture();

    const std::vector<Step> steps;
    std::size_t current = 0;
    QImage lastLook;
    QTimer looking;
    QTimer deadline; // of the current step
};

class SampleOpenerPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "sampleopener.json")

public:
    QObject* create(const QString& name, const QString& arguments) override;
};
