// SPDX-License-Identifier: Apache-2.0

#include "PageServer.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"
#include "Workstation.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QScreen>
#include <QToolButton>

// A page of the web in the embedded browser, an element of it captured, and a process that reads it.

using namespace TourLook;

namespace
{
const QString path = QStringLiteral("/rates");
const QString element = QStringLiteral("美元牌价元素");
constexpr QRect ratePlace(150, 96, 110, 40); // on the page, which is shown unscrolled

QByteArray RatePage(const char* rate)
{
    return QByteArrayLiteral(R"html(<!DOCTYPE html><html lang="zh"><head><title>今日牌价</title><style>
body { margin: 0; font: 16px "Noto Sans CJK SC", sans-serif; color: #223; background: #fff; }
h1 { position: absolute; left: 24px; top: 8px; font-size: 22px; }
span { position: absolute; left: 24px; width: 120px; line-height: 40px; }
b { position: absolute; left: 150px; width: 110px; line-height: 40px; text-align: center; }
</style></head><body><h1>今日牌价</h1>
<span style="top: 96px">美元</span><b id="usd" aria-label="美元牌价" style="top: 96px">)html") +
           rate + QByteArrayLiteral(R"html(</b>
<span style="top: 144px">欧元</span><b id="eur" aria-label="欧元牌价" style="top: 144px">7.7925</b>
</body></html>)html");
}

QPoint MiddleOfRate(QWidget*)
{
    return ratePlace.center();
}

bool HasLoaded()
{
    const auto* reload = VisibleAs<QToolButton>("browserReload");
    return Visible("browserView") && reload && reload->toolTip().startsWith(QStringLiteral("重新加载"));
}

// The engine draws on its own time, after the page has loaded.
bool HasBeenDrawn()
{
    const QWidget* view = Visible("browserView");
    if (!view)
        return false;
    const QRect place(view->mapToGlobal(QPoint()), view->size());
    const QImage seen =
        view->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()).toImage();
    QImage empty(seen.size(), seen.format());
    empty.fill(seen.pixelColor(0, 0));
    return seen != empty;
}

// Whether the glass over the page colours the place: what is under the mouse is marked.
bool IsRateMarked()
{
    QWidget* glass = Visible("browserPointerOverlay");
    if (!glass)
        return false;
    QImage seen(glass->size(), QImage::Format_ARGB32);
    seen.fill(Qt::transparent);
    glass->render(&seen, QPoint(), QRegion(), QWidget::RenderFlags());
    return seen.pixelColor(ratePlace.center()).alpha() > 0 &&
           seen.pixelColor(ratePlace.left() - 20, ratePlace.center().y()).alpha() == 0;
}

QStringList LogLines()
{
    auto* log = VisibleAs<QAbstractItemView>("logView");
    QStringList lines;
    for (int row = 0; log && row < log->model()->rowCount(); ++row)
        lines.append(log->model()->index(row, log->model()->columnCount() - 1).data().toString());
    return lines;
}

QString ElementField()
{
    auto* combo = qobject_cast<QComboBox*>(InPanel("field_element", "editor")());
    return combo ? combo->currentText() : QString();
}
} // namespace

void Tour::OpenPage()
{
    const QString url = d->OnGui([this] {
        if (!pages)
            pages = new PageServer(workstation);
        pages->Put(path, RatePage("7.1836"));
        return pages->Url(path);
    });
    const int askedBefore = d->OnGui([this] { return pages->GetAsked().count(path); });
    d->Click(QStringLiteral("the address"), Named("browserAddress"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(url);
    d->Key(Qt::Key_Return);
    d->Until(
        QStringLiteral("the page"),
        [=] { return pages->GetAsked().count(path) > askedBefore && HasLoaded(); }, std::chrono::seconds(60));
    d->Until(QStringLiteral("the drawn page"), &HasBeenDrawn);
}

void Tour::RefuseRunDuringCapture()
{
    d->Step(QStringLiteral("page-in-the-browser"), [this] {
        GoToPage("pushButtonUI");
        OpenPage();
    });
    d->Step(QStringLiteral("refusal-capture-in-progress"), [this] {
        d->Click(QStringLiteral("capture"), Named("browserCapture"));
        d->Until(QStringLiteral("the glass over the page"),
                 [] { return Visible("browserPointerOverlay") != nullptr; });
        const QStringList before = d->OnGui(&LogLines);
        d->OnGui([this] { toasts->Clear(); });
        PressTool("统计");
        UntilToast(QStringLiteral("正在捕获节点，请先停止捕获再执行"));
        d->TakePicture();
        if (!d->OnGui([] { return Visible("browserPointerOverlay") != nullptr; })) {
            throw TourFailure(QStringLiteral("the refused run ended the capture"));
        }
        if (d->OnGui(&LogLines) != before) {
            throw TourFailure(QStringLiteral("the refused run left a line in the log"));
        }
    });
    d->Step(QStringLiteral("capture-stopped-by-escape"), [this] {
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the glass is gone"), [] { return !Visible("browserPointerOverlay"); });
        d->UntilCalm();
    });
}

void Tour::CaptureElement()
{
    d->Step(QStringLiteral("capture-marks-what-is-under-the-mouse"), [this] {
        AddProcess(QStringLiteral("读取牌价"));
        AddStatement(QStringLiteral("打开网页"));
        FillField("url", d->OnGui([this] { return pages->Url(path); }));
        AddStatement(QStringLiteral("读取元素文本"));
        d->Click(QStringLiteral("capture"), InPanel("field_element", "captureButton"));
        d->HoverAt(QStringLiteral("the rate"), Named("browserPointerOverlay"), &MiddleOfRate);
        d->Until(QStringLiteral("the mark on the rate"), &IsRateMarked);
    });
    d->Step(QStringLiteral("captured-into-the-field"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->ClickAt(QStringLiteral("the rate"), Named("browserPointerOverlay"), &MiddleOfRate);
        UntilToast(QStringLiteral("已捕获元素“%1”").arg(element));
        d->Until(QStringLiteral("the element in the field"), [] { return ElementField() == element; });
        d->TakePicture();
        FillOutput(QStringLiteral("美元"));
    });
    d->Step(QStringLiteral("captured-element-offered-elsewhere"), [this] {
        AddStatement(QStringLiteral("等待元素"));
        d->OnGui([] { InPanel("field_element", "editor")()->setFocus(); });
        d->Key(Qt::Key_Down, Qt::AltModifier);
        d->Until(QStringLiteral("the elements"), [] { return QApplication::activePopupWidget() != nullptr; });
        d->TakePicture();
        d->Key(Qt::Key_Down);
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the list's end"), [] { return !QApplication::activePopupWidget(); });
        d->Until(QStringLiteral("the element in the field"), [] { return ElementField() == element; });
        AddStatement(QStringLiteral("输出日志"));
        FillField("text", QStringLiteral("="));
        d->Type(QStringLiteral("\"一美元合 \" + 美元 + \" 元\""));
    });
}

void Tour::ReadElement()
{
    d->Step(QStringLiteral("run-reads-the-captured-element"), [this] {
        // Another rate than at the capture: what is logged can only come from this run.
        d->OnGui([this] { pages->Put(path, RatePage("7.2001")); });
        LetFirstToolRun(QStringLiteral("读取牌价"));
        PressTool("开始");
        UntilLog(QStringLiteral("一美元合 7.2001 元"));
        UntilLog(QStringLiteral("流程“读取牌价”运行完成"));
        UntilIdle(std::chrono::seconds(10));
    });
}

void Tour::CaptureElements()
{
    // Where no web engine was built in there is no page to capture from.
    if (!d->OnGui(&HasBrowser))
        return;
    RefuseRunDuringCapture();
    CaptureElement();
    ReadElement();
}
