// SPDX-License-Identifier: Apache-2.0

#include "CodeHighlighter_p.h"

#include <WbBaseUI/WbTheme.h>

#include <KSyntaxHighlighting/Definition>
#include <KSyntaxHighlighting/Format>
#include <KSyntaxHighlighting/Repository>
#include <KSyntaxHighlighting/SyntaxHighlighter>
#include <KSyntaxHighlighting/Theme>
#include <ksyntaxhighlighting_version.h>

namespace
{
using Style = KSyntaxHighlighting::Theme::TextStyle;

// The product's colours instead of a theme of the library's, so that code looks like the rest.
bool ColourOf(Style style, WbColor& colour)
{
    switch (style) {
    case Style::Keyword:
    case Style::ControlFlow:
    case Style::Operator:
    case Style::Import:
    case Style::Preprocessor:
    case Style::Variable:
        colour = WbColor::CodeKeyword;
        return true;
    case Style::String:
    case Style::VerbatimString:
    case Style::SpecialString:
    case Style::Char:
    case Style::SpecialChar:
        colour = WbColor::CodeString;
        return true;
    case Style::DecVal:
    case Style::BaseN:
    case Style::Float:
    case Style::Constant:
        colour = WbColor::CodeNumber;
        return true;
    case Style::Comment:
    case Style::CommentVar:
    case Style::Documentation:
    case Style::Annotation:
        colour = WbColor::CodeComment;
        return true;
    case Style::Function:
    case Style::BuiltIn:
    case Style::Attribute:
    case Style::Extension:
    case Style::DataType:
        colour = WbColor::CodeFunction;
        return true;
    default:
        return false;
    }
}

class ThemedHighlighter : public KSyntaxHighlighting::SyntaxHighlighter
{
    Q_OBJECT

public:
    explicit ThemedHighlighter(QTextDocument* document) : SyntaxHighlighter(document)
    {
        static KSyntaxHighlighting::Repository repository;
        setTheme(repository.defaultTheme(KSyntaxHighlighting::Repository::LightTheme));
        setDefinition(repository.definitionForName(QStringLiteral("Python")));
    }

protected:
    void applyFormat(int offset, int length, const KSyntaxHighlighting::Format& format) override
    {
        WbColor colour = WbColor::Text;
        if (length <= 0 || !ColourOf(format.textStyle(), colour))
            return;
        QTextCharFormat look;
        look.setForeground(WbTheme::Instance()->Color(colour));
        look.setFontItalic(colour == WbColor::CodeComment);
        setFormat(offset, length, look);
    }
};
} // namespace

std::unique_ptr<QSyntaxHighlighter> MakePythonHighlighter(QTextDocument& document)
{
    return std::make_unique<ThemedHighlighter>(&document);
}

QString HighlighterName()
{
    return QStringLiteral("KSyntaxHighlighting " SyntaxHighlighting_VERSION_STRING);
}

#include "CodeHighlighterKde.moc"
