// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbTheme.h>

#include <QString>

#include <functional>

// Turns the style sheet template into a style sheet. In the template
//   {accent-text}                a colour of the theme
//   12px                         a length at 100 %, replaced by its scaled length
//   {image:check text-on-accent 12}  a file with that icon, colour and size, given by the image function
class StyleSheetTemplate
{
public:
    // icon name, colour name and size in pixels (already scaled) to a path usable in url(); may be empty.
    using ImageFunction = std::function<QString(const QString&, const QString&, int)>;
    using LengthFunction = std::function<int(int)>;

    StyleSheetTemplate(const QString& text, LengthFunction scale, ImageFunction image);

    QString Fill(WbTheme::Scheme scheme) const;

private:
    QString Resolve(const QString& placeholder, WbTheme::Scheme scheme) const;

    QString scaledText;
    LengthFunction scaleLength;
    ImageFunction imageFor;
};
