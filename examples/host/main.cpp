// SPDX-License-Identifier: Apache-2.0

// The smallest host of the editor: a window with one app in it.
//   host SERVER TOKEN APP-ID APP-NAME visual|program
//   host --try     opens an app of a server that is not there, closes again, and says so
#include <RpaCore/RobotExecuteInfo.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>

class HostWindow : public QMainWindow
{
public:
    explicit HostWindow(const RobotExecuteInfo& info)
    {
        setWindowTitle(info.GetAppName());
        auto* editor = new RpaAppEditorWidget(this);
        setCentralWidget(editor);
        resize(1280, 800);
        show();
        editor->SetExecuteInfo(info);
    }

protected:
    // The editor asks about unsaved work; the user may stay.
    void closeEvent(QCloseEvent* event) override
    {
        event->setAccepted(RpaGlobalLifeCycle::Instance()->BeforeClose());
    }
};

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    QStringList words = app.arguments().mid(1);
    const bool trying = words == QStringList{"--try"};
    if (trying)
        words = QStringList{"http://127.0.0.1:9", "token", "app-1", "示例应用", "visual"};
    if (words.size() != 5) {
        std::puts("host SERVER TOKEN APP-ID APP-NAME visual|program");
        return 2;
    }

    VersionServiceSettings::Instance()->SetBaseUrl(words[0]);
    VersionServiceSettings::Instance()->SetToken(words[1].toLatin1());
    RobotExecuteInfo info;
    info.SetAppId(words[2]);
    info.SetAppName(words[3]);
    info.SetAppKind(words[4] == "program" ? 1 : 0);

    HostWindow window(info);
    if (trying)
        QTimer::singleShot(0, &window,
                           [&window] { std::puts(window.close() ? "editor built and closed" : "refused"); });
    return app.exec();
}
