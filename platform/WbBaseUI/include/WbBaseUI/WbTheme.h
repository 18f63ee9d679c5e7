// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QColor>
#include <QFont>
#include <QObject>

#include <memory>

// What a colour is for. Every colour of the product is one of these; each has one value per scheme.
enum class WbColor
{
    Window,        // behind everything
    Surface,       // panels, cards, tool bars
    SurfaceRaised, // dialogs, menus, popups
    Field,         // inside of input fields, lists, tables
    Stripe,        // header of tables, every second row
    Hover,
    Pressed,
    Selection,    // background of selected rows and text
    Border,       // between areas
    BorderStrong, // around input fields and check boxes
    Text,
    TextSecondary,
    TextDisabled,
    TextOnAccent,
    Accent, // filled buttons, marks of the selected thing
    AccentHover,
    AccentPressed,
    AccentText, // links, selected tabs, icons that are on
    AccentSoft, // tinted background of secondary buttons
    FocusRing,
    FocusOnFill, // ring inside a filled button
    Danger,
    DangerHover,
    DangerPressed,
    DangerText,
    DangerSoft,
    WarningText,
    WarningSoft,
    SuccessText,
    SuccessSoft,
    ToolTip,
    ToolTipText,
    ScrollHandle,
    ScrollHandleHover,
    CodeKeyword,
    CodeString,
    CodeNumber,
    CodeComment,
    CodeFunction,
    CodeCurrentLine,
    Breakpoint,
    ExecutionLine, // background of the statement that runs
};

// Look of the application: fonts, palette and the one style sheet, in a light and a dark scheme. Lengths in
// the style sheet follow DpiTool; when the scale changes the look is applied again by itself. GUI thread
// only.
class WBBASEUI_EXPORT WbTheme : public QObject
{
    Q_OBJECT

public:
    // Which of its two values each colour has.
    enum class Scheme
    {
        Light,
        Dark,
    };
    Q_ENUM(Scheme)

    // The one of the process.
    static WbTheme* Instance();
    ~WbTheme() override;

    // Gives the running QApplication fonts, palette and style sheet of the scheme; emits SigChanged.
    void Apply(Scheme scheme);

    // Light before the first Apply().
    Scheme GetScheme() const;

    // The colour in the scheme that is applied, or in any.
    QColor Color(WbColor color) const;
    static QColor Color(WbColor color, Scheme scheme);

    // Name of a colour in the style sheet template, such as "accent-text".
    static QString ColorName(WbColor color);

    // Font of the user interface at the current scale.
    static QFont UiFont();
    // Fixed-width font for code and logs at the current scale.
    static QFont CodeFont();

    // The style sheet that Apply() sets, for the current scale.
    QString StyleSheet(Scheme scheme) const;

signals:
    // Colours or lengths have changed; widgets that paint by themselves repaint.
    void SigChanged();

private:
    WbTheme();

    class Private;
    const std::unique_ptr<Private> d;
};
