// SPDX-License-Identifier: Apache-2.0

#include "StyleSheetTemplate_p.h"
#include "ThemeImages_p.h"
#include "ThemeStyle_p.h"
#include "ThemeTokens_p.h"

#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QScreen>
#include <QToolTip>

namespace
{
constexpr int uiFontPixels = 14;
constexpr int codeFontPixels = 13;
constexpr qreal pointsPerInch = 72.0;

// Sizes are designed in pixels at 100 %; as points they also hold on a screen whose own resolution differs.
qreal PointSize(int pixels)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const qreal dpi = screen ? screen->logicalDotsPerInchY() : 96.0;
    return pixels * DpiTool::GetScale() * pointsPerInch / dpi;
}

QFont MakeFont(const QStringList& families, int pixels)
{
    QFont font;
    font.setFamilies(families);
    font.setPointSizeF(PointSize(pixels));
    return font;
}

QPalette MakePalette(WbTheme::Scheme scheme)
{
    const auto color = [scheme](WbColor c) { return WbTheme::Color(c, scheme); };
    QPalette palette(color(WbColor::Surface), color(WbColor::Window));
    const struct
    {
        QPalette::ColorRole role;
        WbColor normal;
        WbColor disabled;
    } roles[] = {
        {QPalette::Window, WbColor::Window, WbColor::Window},
        {QPalette::WindowText, WbColor::Text, WbColor::TextDisabled},
        {QPalette::Base, WbColor::Field, WbColor::Window},
        {QPalette::AlternateBase, WbColor::Stripe, WbColor::Stripe},
        {QPalette::Text, WbColor::Text, WbColor::TextDisabled},
        {QPalette::PlaceholderText, WbColor::TextSecondary, WbColor::TextDisabled},
        {QPalette::Button, WbColor::Surface, WbColor::Window},
        {QPalette::ButtonText, WbColor::Text, WbColor::TextDisabled},
        {QPalette::BrightText, WbColor::DangerText, WbColor::TextDisabled},
        {QPalette::Highlight, WbColor::Selection, WbColor::Pressed},
        {QPalette::HighlightedText, WbColor::Text, WbColor::TextDisabled},
        {QPalette::Link, WbColor::AccentText, WbColor::TextDisabled},
        {QPalette::LinkVisited, WbColor::AccentText, WbColor::TextDisabled},
        {QPalette::ToolTipBase, WbColor::ToolTip, WbColor::ToolTip},
        {QPalette::ToolTipText, WbColor::ToolTipText, WbColor::ToolTipText},
        {QPalette::Light, WbColor::Surface, WbColor::Surface},
        {QPalette::Midlight, WbColor::Hover, WbColor::Hover},
        {QPalette::Mid, WbColor::Border, WbColor::Border},
        {QPalette::Dark, WbColor::BorderStrong, WbColor::Border},
    };
    for (const auto& entry : roles) {
        palette.setColor(entry.role, color(entry.normal));
        palette.setColor(QPalette::Disabled, entry.role, color(entry.disabled));
    }
    return palette;
}

QString ReadTemplate()
{
    QFile file(QStringLiteral(":/wb/theme/theme.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

class WbTheme::Private : public IDpiAdapter
{
public:
    explicit Private(WbTheme* theme) : q(theme) { DpiTool::Register(this); }
    ~Private() override { DpiTool::Unregister(this); }

    void AdjustForDpi() override
    {
        if (applied)
            q->Apply(scheme);
    }

    WbTheme* const q;
    Scheme scheme = Scheme::Light;
    bool applied = false;
    ThemeImages images;
};

WbTheme* WbTheme::Instance()
{
    static WbTheme instance;
    return &instance;
}

WbTheme::WbTheme() : d(std::make_unique<Private>(this)) {}

WbTheme::~WbTheme() = default;

void WbTheme::Apply(Scheme scheme)
{
    d->scheme = scheme;
    if (!d->applied) {
        // The application takes the style over.
        QApplication::setStyle(std::make_unique<ThemeStyle>().release());
    }
    d->applied = true;
    const QPalette palette = MakePalette(scheme);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    // Before: what the style sheet says of a widget's font is kept together with the rest of the font. After:
    // with the first style sheet Qt takes the system's own fonts for item views, menus and tips again.
    QApplication::setFont(UiFont());
    qApp->setStyleSheet(StyleSheet(scheme));
    QApplication::setFont(UiFont());
    emit SigChanged();
}

WbTheme::Scheme WbTheme::GetScheme() const
{
    return d->scheme;
}

QColor WbTheme::Color(WbColor color) const
{
    return Color(color, d->scheme);
}

QColor WbTheme::Color(WbColor color, Scheme scheme)
{
    const ColorToken& token = ColorTokens()[static_cast<std::size_t>(color)];
    return QColor::fromRgb(scheme == Scheme::Light ? token.light : token.dark);
}

QString WbTheme::ColorName(WbColor color)
{
    return QLatin1String(ColorTokens()[static_cast<std::size_t>(color)].name);
}

QFont WbTheme::UiFont()
{
    return MakeFont({QStringLiteral("Microsoft YaHei UI"), QStringLiteral("Noto Sans CJK SC"),
                     QStringLiteral("WenQuanYi Micro Hei")},
                    uiFontPixels);
}

QFont WbTheme::CodeFont()
{
    // First the one that has Chinese letters, too: lines that mix two fonts are of different heights.
    QFont font = MakeFont({QStringLiteral("Noto Sans Mono CJK SC"), QStringLiteral("Consolas"),
                           QStringLiteral("DejaVu Sans Mono")},
                          codeFontPixels);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

QString WbTheme::StyleSheet(Scheme scheme) const
{
    const StyleSheetTemplate sheet(
        ReadTemplate(), [](int length) { return DpiTool::ScaleDefault(length); },
        [this, scheme](const QString& icon, const QString& color, int size) {
            return d->images.PathFor(icon, color, size, scheme);
        });
    return sheet.Fill(scheme);
}
