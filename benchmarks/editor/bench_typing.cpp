// SPDX-License-Identifier: Apache-2.0

// A key press in long texts, until its paint: instructions of 1 MB in the rich editor and a program of 100 kB
// in the code editor, each beside Qt's own editor with the same text.

#include "FrameTimes.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBaseUI/WbTheme.h>
#include <WbWebKernal/WbRichEditor.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace
{
constexpr int keys = 200;
constexpr int richBytes = 1024 * 1024;
constexpr int codeBytes = 100 * 1024;
const QSize size(900, 600);

QString Html()
{
    QString html;
    while (html.size() < richBytes)
        html += QStringLiteral(
            "<p>一段有<b>格式</b>的说明文字，长度和真实的说明差不多，一共一百来个字符。</p>\n");
    html.chop(1); // as the editor writes it
    return html;
}

QString Code()
{
    QString text;
    while (text.size() < codeBytes)
        text +=
            QStringLiteral("def step(value, other=None):  # 一步\n    return [value, other, \"文本\"]\n\n");
    return text;
}

template <typename Edit>
void Type(const char* what, Edit& edit)
{
    edit.moveCursor(QTextCursor::End);
    QVector<double> times;
    for (int i = 0; i < keys; ++i) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
        times << FrameTimes::Measure([&] { QCoreApplication::sendEvent(&edit, &press); });
    }
    FrameTimes::Print(what, FrameTimes::Of(times));
}

template <typename Widget, typename Fill>
void Open(const char* what, Widget& widget, Fill fill)
{
    widget.resize(size);
    FrameTimes::PrintTime(what, FrameTimes::Measure([&] {
                              fill();
                              widget.show();
                          }));
}

void Rich()
{
    std::printf("rich text, 1 MB\n");
    const QString html = Html();
    WbRichEditor editor;
    Open("open", editor, [&] { editor.Init(html); });
    Type("key", *editor.findChild<QTextEdit*>(QStringLiteral("richTextView")));
    QTextEdit bare;
    Open("QTextEdit: open", bare, [&] { bare.setHtml(html); });
    Type("QTextEdit: key", bare);
}

void Program()
{
    std::printf("program, 100 kB\n");
    const QString code = Code();
    const auto app = RpaAppDataPtr::create();
    app->GetAppExtendInfo()->SetAppKind(1);
    app->InitDefault();
    ProcessDataManager* processes = app->GetProcessDataManager();
    processes->Clear();
    processes->AddProcess(QStringLiteral("main"))->SetProgramText(code);
    ProcessProgramEditorWidget editor;
    Open("open", editor, [&] { editor.SetRpaAppData(app); });
    Type("key", *editor.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit")));
    QPlainTextEdit bare;
    Open("QPlainTextEdit: open", bare, [&] { bare.setPlainText(code); });
    Type("QPlainTextEdit: key", bare);
}
} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    Rich();
    Program();
    return 0;
}
