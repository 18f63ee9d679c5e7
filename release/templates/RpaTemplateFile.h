// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

class RpaTemplateData;

// A template file is one data-stream record without header or extension: a text, the JSON of an
// RpaTemplateData.
namespace RpaTemplateFile
{
// The content of the file that holds the template; empty when it cannot be made.
QByteArray Encode(const RpaTemplateData& record);

// Reads the content of a file into the template, which stays as it is when the content is no template.
void Decode(const QByteArray& content, RpaTemplateData& record);
} // namespace RpaTemplateFile
