// SPDX-License-Identifier: Apache-2.0

#include "ColorContrast.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QFile>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTextLayout>
#include <QtTest>

#include <RpaResources.h>

namespace
{
constexpr qreal textContrast = 4.5;
constexpr qreal markContrast = 3.0;
constexpr qreal disabledContrast = 2.5;
constexpr int visibleAlpha = 64;

void AddPair(WbColor front, WbColor back, qreal least)
{
    for (const auto scheme : {WbTheme::Scheme::Light, WbTheme::Scheme::Dark}) {
        const QString name =
            QStringLiteral("%1 on %2, %3")
                .arg(WbTheme::ColorName(front), WbTheme::ColorName(back),
                     scheme == WbTheme::Scheme::Light ? QStringLiteral("light") : QStringLiteral("dark"));
        QTest::newRow(qPrintable(name)) << int(front) << int(back) << int(scheme) << least;
    }
}

bool HasInk(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > visibleAlpha)
                return true;
    }
    return false;
}
} // namespace

class TestTheme : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void keepsTextReadable_data();
    void keepsTextReadable();
    void namesEveryColourOnce();
    void fillsTheWholeTemplate_data();
    void fillsTheWholeTemplate();
    void namesOnlyPicturesThatExist();
    void scalesLengthsAndFonts();
    void switchesWhileItRuns();
    void appliesTheScaleOfTheScreen();
    void setsFamiliesThatHaveChineseLetters();
#ifdef Q_OS_LINUX // Windows has no font of fixed width with Chinese letters that is fit for code
    void linesOfCodeAreOfOneHeightInAnyScript();
#endif
    void givesEveryKindOfWidgetTheSameFont_data();
    void givesEveryKindOfWidgetTheSameFont();
    void drawsEveryIcon_data();
    void drawsEveryIcon();
    void drawsDifferentIcons();
    void drawsIconsInTheColoursOfTheTheme();
    void drawsDisabledAndSelectedIconsInTheirOwnColour();
    void keepsTheColourOfAFaultInASelectedRow();
    void drawsIconsSharpOnDenseScreens();
    void givesANullIconForAnUnknownName();
    void bringsTheVersionImages_data();
    void bringsTheVersionImages();
};

void TestTheme::cleanup()
{
    DpiTool::SetScale(1.0);
}

void TestTheme::keepsTextReadable_data()
{
    QTest::addColumn<int>("front");
    QTest::addColumn<int>("back");
    QTest::addColumn<int>("scheme");
    QTest::addColumn<qreal>("least");

    const QVector<WbColor> grounds = {WbColor::Window,    WbColor::Surface, WbColor::SurfaceRaised,
                                      WbColor::Field,     WbColor::Stripe,  WbColor::Hover,
                                      WbColor::Selection, WbColor::Pressed};
    for (const WbColor ground : grounds) {
        AddPair(WbColor::Text, ground, textContrast);
        AddPair(WbColor::TextSecondary, ground, textContrast);
    }
    // What cannot be used now is still read, but stands back.
    for (const WbColor ground : grounds)
        AddPair(WbColor::TextDisabled, ground, disabledContrast);
    AddPair(WbColor::DangerText, WbColor::Selection, textContrast);
    // The texts of a statement that is selected or runs, commented out or not.
    AddPair(WbColor::TextSecondary, WbColor::ExecutionLine, textContrast);
    AddPair(WbColor::SuccessText, WbColor::ExecutionLine, textContrast);
    AddPair(WbColor::SuccessText, WbColor::Selection, textContrast);
    for (const WbColor ground : {WbColor::Window, WbColor::Surface, WbColor::SurfaceRaised, WbColor::Field}) {
        for (const WbColor front :
             {WbColor::AccentText, WbColor::DangerText, WbColor::WarningText, WbColor::SuccessText})
            AddPair(front, ground, textContrast);
        AddPair(WbColor::BorderStrong, ground, markContrast);
        AddPair(WbColor::FocusRing, ground, markContrast);
        AddPair(WbColor::Accent, ground, markContrast);
    }
    for (const WbColor fill : {WbColor::Accent, WbColor::AccentHover, WbColor::AccentPressed, WbColor::Danger,
                               WbColor::DangerHover, WbColor::DangerPressed}) {
        AddPair(WbColor::TextOnAccent, fill, textContrast);
        AddPair(WbColor::FocusOnFill, fill, markContrast);
    }
    AddPair(WbColor::AccentText, WbColor::AccentSoft, textContrast);
    AddPair(WbColor::DangerText, WbColor::DangerSoft, textContrast);
    AddPair(WbColor::WarningText, WbColor::WarningSoft, textContrast);
    AddPair(WbColor::SuccessText, WbColor::SuccessSoft, textContrast);
    AddPair(WbColor::ToolTipText, WbColor::ToolTip, textContrast);
    for (const WbColor soft :
         {WbColor::AccentSoft, WbColor::DangerSoft, WbColor::WarningSoft, WbColor::SuccessSoft})
        AddPair(WbColor::Text, soft, textContrast);
    for (const WbColor code : {WbColor::CodeKeyword, WbColor::CodeString, WbColor::CodeNumber,
                               WbColor::CodeComment, WbColor::CodeFunction, WbColor::Text}) {
        AddPair(code, WbColor::Field, textContrast);
        AddPair(code, WbColor::CodeCurrentLine, textContrast);
        AddPair(code, WbColor::ExecutionLine, textContrast);
    }
    AddPair(WbColor::Breakpoint, WbColor::Field, markContrast);
}

void TestTheme::keepsTextReadable()
{
    QFETCH(int, front);
    QFETCH(int, back);
    QFETCH(int, scheme);
    QFETCH(qreal, least);
    const auto theme = static_cast<WbTheme::Scheme>(scheme);

    const qreal contrast = ColorContrast(WbTheme::Color(static_cast<WbColor>(front), theme),
                                         WbTheme::Color(static_cast<WbColor>(back), theme));

    QVERIFY2(contrast >= least, qPrintable(QString::number(contrast)));
}

void TestTheme::namesEveryColourOnce()
{
    QSet<QString> names;
    for (int color = 0; color <= int(WbColor::ExecutionLine); ++color)
        names.insert(WbTheme::ColorName(static_cast<WbColor>(color)));

    QCOMPARE(names.size(), int(WbColor::ExecutionLine) + 1);
    QCOMPARE(WbTheme::ColorName(WbColor::Window), QStringLiteral("window"));
    QCOMPARE(WbTheme::ColorName(WbColor::FocusOnFill), QStringLiteral("focus-on-fill"));
    QCOMPARE(WbTheme::ColorName(WbColor::ExecutionLine), QStringLiteral("execution-line"));
}

void TestTheme::fillsTheWholeTemplate_data()
{
    QTest::addColumn<int>("scheme");

    QTest::newRow("light") << int(WbTheme::Scheme::Light);
    QTest::newRow("dark") << int(WbTheme::Scheme::Dark);
}

void TestTheme::fillsTheWholeTemplate()
{
    QFETCH(int, scheme);

    const QString sheet = WbTheme::Instance()->StyleSheet(static_cast<WbTheme::Scheme>(scheme));

    QVERIFY(sheet.size() > 5000);
    QVERIFY(!sheet.contains(QStringLiteral("{image:")));
    static const QRegularExpression unfilled(QStringLiteral("\\{[a-z-]+\\}|url\\(\\)|: ;"));
    const QRegularExpressionMatch match = unfilled.match(sheet);
    QVERIFY2(!match.hasMatch(), qPrintable(match.captured()));
}

void TestTheme::namesOnlyPicturesThatExist()
{
    const QString sheet = WbTheme::Instance()->StyleSheet(WbTheme::Scheme::Light);
    static const QRegularExpression pictures(QStringLiteral("url\\(([^)]*)\\)"));
    int count = 0;
    auto matches = pictures.globalMatch(sheet);
    while (matches.hasNext()) {
        const QString path = matches.next().captured(1);
        const QImage image(path);
        QVERIFY2(!image.isNull() && HasInk(image), qPrintable(path));
        QVERIFY2(QFile::exists(QString(path).replace(QStringLiteral(".png"), QStringLiteral("@2x.png"))),
                 qPrintable(path));
        ++count;
    }

    QVERIFY(count > 20);
}

void TestTheme::scalesLengthsAndFonts()
{
    const QString normal = WbTheme::Instance()->StyleSheet(WbTheme::Scheme::Light);
    const qreal points = WbTheme::UiFont().pointSizeF();

    DpiTool::SetScale(2.0);

    const QString twice = WbTheme::Instance()->StyleSheet(WbTheme::Scheme::Light);
    QVERIFY(normal.contains(QStringLiteral("min-height: 30px")));
    QVERIFY(twice.contains(QStringLiteral("min-height: 60px")));
    QVERIFY(!twice.contains(QStringLiteral("min-height: 30px")));
    QVERIFY(qFuzzyCompare(WbTheme::UiFont().pointSizeF(), 2 * points));
}

void TestTheme::switchesWhileItRuns()
{
    WbTheme* theme = WbTheme::Instance();
    theme->Apply(WbTheme::Scheme::Light);
    QWidget window;
    WbPushButton button(&window);
    button.setFocusPolicy(Qt::NoFocus);
    button.resize(80, 32);
    window.show();
    QSignalSpy changed(theme, &WbTheme::SigChanged);

    theme->Apply(WbTheme::Scheme::Dark);

    QCOMPARE(changed.count(), 1);
    QCOMPARE(theme->GetScheme(), WbTheme::Scheme::Dark);
    const QImage picture = button.grab().toImage();
    QCOMPARE(picture.pixelColor(picture.rect().center()),
             WbTheme::Color(WbColor::Surface, WbTheme::Scheme::Dark));
    QCOMPARE(QApplication::palette().color(QPalette::Window), theme->Color(WbColor::Window));
}

void TestTheme::appliesTheScaleOfTheScreen()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    QWidget window;
    WbPushButton button(&window);
    window.show();
    const int height = button.sizeHint().height();

    DpiTool::SetScale(2.0);

    QTRY_COMPARE(button.sizeHint().height(), 2 * height);
}

void TestTheme::setsFamiliesThatHaveChineseLetters()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);

    QCOMPARE(QApplication::font().families().constFirst(), QStringLiteral("Microsoft YaHei UI"));
    QVERIFY(QFontMetrics(QApplication::font()).inFontUcs4(U'版'));
    const QFontMetricsF code(WbTheme::CodeFont());
    QCOMPARE(code.horizontalAdvance(QLatin1Char('i')), code.horizontalAdvance(QLatin1Char('W')));
}

#ifdef Q_OS_LINUX
void TestTheme::linesOfCodeAreOfOneHeightInAnyScript()
{
    const auto heightOf = [](const QString& code) {
        QTextLayout layout(code, WbTheme::CodeFont());
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        return line.height();
    };

    QCOMPARE(heightOf(QStringLiteral("print(\"出库单\")")), heightOf(QStringLiteral("print(7)")));
}
#endif

void TestTheme::givesEveryKindOfWidgetTheSameFont_data()
{
    // Windows has fonts of its own for these.
    QTest::addColumn<QByteArray>("kind");
    for (const char* kind : {"QAbstractItemView", "QMenu", "QMessageBox", "QTipLabel"})
        QTest::newRow(kind) << QByteArray(kind);
}

void TestTheme::givesEveryKindOfWidgetTheSameFont()
{
    QFETCH(QByteArray, kind);

    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);

    QCOMPARE(QApplication::font(kind.constData()), QApplication::font());
}

void TestTheme::drawsEveryIcon_data()
{
    QTest::addColumn<QString>("name");

    for (const QString& name : WbIcons::Names())
        QTest::newRow(qPrintable(name)) << name;
}

void TestTheme::drawsEveryIcon()
{
    QFETCH(QString, name);

    const QIcon icon = WbIcons::Get(name);

    QVERIFY(!icon.isNull());
    for (const int size : {12, 16, 24, 48}) {
        const QImage image = icon.pixmap(size, size).toImage();
        QCOMPARE(image.size(), QSize(size, size));
        // The empty-state drawing is a picture of 96 px with soft lines.
        QVERIFY2(HasInk(image) || (name == QLatin1String("empty") && size < 48),
                 qPrintable(QString::number(size)));
    }
}

void TestTheme::drawsDifferentIcons()
{
    QHash<QByteArray, QString> seen;
    for (const QString& name : WbIcons::Names()) {
        const QImage image = WbIcons::Pixmap(name, 24).toImage();
        const QByteArray bits(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes()));
        QVERIFY2(!seen.contains(bits), qPrintable(name + QLatin1String(" looks like ") + seen.value(bits)));
        seen.insert(bits, name);
    }
}

void TestTheme::drawsIconsInTheColoursOfTheTheme()
{
    const QIcon icon = WbIcons::Get(QStringLiteral("stop"), WbColor::Text);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    const QImage light = icon.pixmap(24, 24).toImage();

    WbTheme::Instance()->Apply(WbTheme::Scheme::Dark);
    const QImage dark = icon.pixmap(24, 24).toImage();

    QVERIFY(light != dark);
    const QImage dot = WbIcons::Pixmap(QStringLiteral("dot"), 24, WbColor::Accent).toImage();
    QCOMPARE(QColor(dot.pixel(12, 12)), WbTheme::Instance()->Color(WbColor::Accent));
}

void TestTheme::drawsDisabledAndSelectedIconsInTheirOwnColour()
{
    const QIcon icon = WbIcons::Get(QStringLiteral("dot"), WbColor::Text);
    const auto middle = [&icon](QIcon::Mode mode, QIcon::State state) {
        return QColor(icon.pixmap(QSize(24, 24), mode, state).toImage().pixel(12, 12));
    };
    const WbTheme* theme = WbTheme::Instance();

    QCOMPARE(middle(QIcon::Normal, QIcon::Off), theme->Color(WbColor::Text));
    QCOMPARE(middle(QIcon::Disabled, QIcon::Off), theme->Color(WbColor::TextDisabled));
    QCOMPARE(middle(QIcon::Selected, QIcon::Off), theme->Color(WbColor::AccentText));
    QCOMPARE(middle(QIcon::Normal, QIcon::On), theme->Color(WbColor::AccentText));
}

void TestTheme::keepsTheColourOfAFaultInASelectedRow()
{
    const QIcon icon = WbIcons::Get(QStringLiteral("dot"), WbColor::DangerText);

    const QImage selected = icon.pixmap(QSize(24, 24), QIcon::Selected, QIcon::Off).toImage();

    QCOMPARE(QColor(selected.pixel(12, 12)), WbTheme::Instance()->Color(WbColor::DangerText));
}

void TestTheme::drawsIconsSharpOnDenseScreens()
{
    const QPixmap picture = WbIcons::Pixmap(QStringLiteral("save"), 16, WbColor::Text, 2.0);

    QCOMPARE(picture.size(), QSize(32, 32));
    QCOMPARE(picture.devicePixelRatioF(), 2.0);
}

void TestTheme::givesANullIconForAnUnknownName()
{
    QVERIFY(WbIcons::Get(QStringLiteral("no such icon")).isNull());
    QVERIFY(WbIcons::Pixmap(QStringLiteral("no such icon"), 16).isNull());
    QVERIFY(WbIcons::Pixmap(QStringLiteral("save"), 0).isNull());
}

void TestTheme::bringsTheVersionImages_data()
{
    QTest::addColumn<QString>("path");

    for (const char* name : {"document_link", "version_icon_beta", "version_icon_online"}) {
        for (const char* suffix : {"", "_hover"}) {
            const QString path =
                QStringLiteral(":/images/rpa/%1%2.png").arg(QLatin1String(name), QLatin1String(suffix));
            QTest::newRow(qPrintable(path)) << path;
        }
    }
}

void TestTheme::bringsTheVersionImages()
{
    QFETCH(QString, path);
    RpaResources::Init();
    RpaResources::Init();

    const QImage image(path);

    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), QSize(52, 52));
    QVERIFY(HasInk(image.scaled(13, 13, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

RPA_TEST_MAIN(TestTheme)
#include "tst_theme.moc"
